#include "txhost/HostSystem.h"

#include "common/ProcessFamily.h"
#include "common/cmFile.h"
#include "common/cmPath.h"
#include "common/cmStringCatHelper.h"

#include <dlfcn.h>

#include <cstdlib>
#include <utility>

cmStringT SharedLibrary::load(cmROStringT name)
{
    unload();
    const cmStringT program = cmProgramPath();
    const cmStringT path = cmCat(program.view().substr(0, program.view().rfind('/'))) + "/lib" + name + ".so";
    m_handle = dlopen(path.c_str(), RTLD_NOW | RTLD_LOCAL);
    return m_handle ? cmStringT() : cmStringT(dlerror());
}

SharedLibrary::AnyFunction SharedLibrary::address(const char* name) const
{
    return m_handle ? reinterpret_cast<AnyFunction>(dlsym(m_handle, name)) : nullptr;
}

void SharedLibrary::unload()
{
    if (m_handle)
        dlclose(std::exchange(m_handle, nullptr));
}

void endChildProcesses()
{
    endAllChildFamilies();
}

cmStringT redirectRecentList(const cmStringT& folder)
{
    setenv("XDG_DATA_HOME", folder.c_str(), 1);
    return cmJoinPath(folder, "recently-used.xbel");
}
