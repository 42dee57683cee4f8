#include "common/WideText.h"
#include "common/cmFile.h"
#include "common/cmPath.h"

#include <windows.h>

#include <string>

namespace {

/// Calls `fill(buffer, size)`, which returns the length or how much it needs, until all of the text fits.
template <class Fill>
cmStringT filledText(Fill fill)
{
    std::wstring text(MAX_PATH, L'\0');
    for (;;) {
        const DWORD length = fill(text.data(), static_cast<DWORD>(text.size()));
        if (length < text.size())
            return length == 0 ? cmStringT() : narrowText({text.data(), length});
        text.resize(length * std::size_t{2});
    }
}

}  // namespace

cmStringT cmRealPath(cmROStringT path)
{
    // Folders can be opened with backup semantics only; no right is needed to ask for the name.
    constexpr DWORD share = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;
    HANDLE file = CreateFileW(wideText(path).c_str(), 0, share, nullptr, OPEN_EXISTING, FILE_FLAG_BACKUP_SEMANTICS, nullptr);
    if (file == INVALID_HANDLE_VALUE)
        return {};
    const cmStringT real = filledText(
        [file](wchar_t* text, DWORD size) { return GetFinalPathNameByHandleW(file, text, size, FILE_NAME_NORMALIZED); });
    CloseHandle(file);
    return cmWithoutVerbatimPrefix(real);
}

cmStringT cmProgramPath()
{
    return filledText([](wchar_t* text, DWORD size) { return GetModuleFileNameW(nullptr, text, size); });
}
