#include "common/ChildPipe.h"

#include "common/NativeHandle.h"
#include "common/cmStatusException.h"

#include <windows.h>

#include <utility>

namespace {

/// Replaces an inheritable handle by a duplicate that is not inheritable. Returns false, with no handle open, on failure.
bool makePrivate(HANDLE& end)
{
    const HANDLE self = GetCurrentProcess();
    HANDLE duplicate = nullptr;
    const bool made = DuplicateHandle(self, end, self, &duplicate, 0, FALSE, DUPLICATE_SAME_ACCESS) != 0;
    CloseHandle(end);
    end = made ? duplicate : INVALID_HANDLE_VALUE;
    return made;
}

}  // namespace

void ChildPipe::closeEnd(std::intptr_t& end)
{
    if (end != none)
        CloseHandle(nativeHandle(std::exchange(end, none)));
}

void ChildPipe::create(bool toChild, std::uint32_t bufferSize)
{
    close();
    SECURITY_ATTRIBUTES inheritable{sizeof(SECURITY_ATTRIBUTES), nullptr, TRUE};
    HANDLE readEnd = INVALID_HANDLE_VALUE;
    HANDLE writeEnd = INVALID_HANDLE_VALUE;
    if (!CreatePipe(&readEnd, &writeEnd, &inheritable, bufferSize))
        throw cmStatusException(cmStatusPipeFailed);
    const bool made = makePrivate(toChild ? writeEnd : readEnd);
    parentEnd = reinterpret_cast<std::intptr_t>(toChild ? writeEnd : readEnd);
    childEnd = reinterpret_cast<std::intptr_t>(toChild ? readEnd : writeEnd);
    if (!made) {
        close();
        throw cmStatusException(cmStatusPipeFailed);
    }
}

bool ChildPipe::dataAvailable()
{
    if (parentEnd == none || ended)
        return false;
    DWORD waiting = 0;
    if (PeekNamedPipe(nativeHandle(parentEnd), nullptr, 0, nullptr, &waiting, nullptr))
        return waiting > 0;
    ended = GetLastError() == ERROR_BROKEN_PIPE;
    failed |= !ended;
    return false;
}

int ChildPipe::read(void* buffer, std::uint32_t count)
{
    DWORD taken = 0;
    if (ReadFile(nativeHandle(parentEnd), buffer, count, &taken, nullptr))
        return static_cast<int>(taken);
    return GetLastError() == ERROR_BROKEN_PIPE ? 0 : -1;
}

int ChildPipe::write(const void* data, std::uint32_t count)
{
    DWORD written = 0;
    return WriteFile(nativeHandle(parentEnd), data, count, &written, nullptr) ? static_cast<int>(written) : -1;
}
