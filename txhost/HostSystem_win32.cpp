#include "txhost/HostSystem.h"

#include "common/WideText.h"
#include "common/cmFile.h"
#include "common/cmStringCatHelper.h"

#include <windows.h>

#include <string>
#include <utility>

cmStringT SharedLibrary::load(cmROStringT name)
{
    unload();
    const cmStringT program = cmProgramPath();
    const cmStringT path = cmCat(program.view().substr(0, program.view().rfind('\\'))) + "\\" + name + ".dll";
    const std::wstring widePath = wideText(path);
    m_handle = LoadLibraryW(widePath.c_str());
    const DWORD error = GetLastError();
    return m_handle ? cmStringT() : cmStringT(cmCat(path) + ": error " + std::to_string(error));
}

SharedLibrary::AnyFunction SharedLibrary::address(const char* name) const
{
    return m_handle ? reinterpret_cast<AnyFunction>(GetProcAddress(static_cast<HMODULE>(m_handle), name)) : nullptr;
}

void SharedLibrary::unload()
{
    if (m_handle)
        FreeLibrary(static_cast<HMODULE>(std::exchange(m_handle, nullptr)));
}

cmStringT redirectRecentList(const cmStringT&)
{
    return {};
}
