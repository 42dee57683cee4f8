#include "txhost/HostSystem.h"

#include "common/CommandQuoting.h"
#include "common/Environment.h"
#include "common/ProcessFamily.h"
#include "common/cmFile.h"
#include "common/cmPath.h"
#include "common/cmStringCatHelper.h"

#include <dlfcn.h>
#include <glib.h>
#include <unistd.h>

#include <cstdlib>
#include <memory>
#include <utility>

namespace {

constexpr const char* dataFolderVariable = "XDG_DATA_HOME";
constexpr const char* listName = "recently-used.xbel";

}  // namespace

cmStringT SharedLibrary::load(cmROStringT name)
{
    unload();
    const cmStringT program = cmProgramPath();
    const cmROStringT folder = cmDirectoryOf(program);
    const cmStringT file = cmCat("lib") + name + ".so";
    cmStringT path = cmJoinPath(folder, file);
    if (cmReadFileItem(path).state == cmItemState::missing)
        path = cmJoinPath(cmJoinPath(folder, FILEWATCHER_MODULE_FOLDER), file);
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

std::uint32_t currentThreadNumber()
{
    return static_cast<std::uint32_t>(gettid());
}

void endChildProcessesOf(std::uint32_t threadNumber)
{
    endChildFamiliesOf(static_cast<int>(threadNumber));
}

cmStringT shellCommandLine(cmROStringT command)
{
    return cmCat("/bin/sh -c ") + inDoubleQuotes(command);
}

bool isOnRecentList(const cmStringT& path)
{
    const cmStringT chosen = environmentValue(hostEnvironment(), dataFolderVariable);
    const cmStringT folder = cmIsAbsolutePath(chosen) ? chosen : cmJoinPath(g_get_home_dir(), ".local/share");
    const std::unique_ptr<GBookmarkFile, decltype(&g_bookmark_file_free)> list(g_bookmark_file_new(), &g_bookmark_file_free);
    const std::unique_ptr<char, decltype(&g_free)> uri(g_filename_to_uri(path.c_str(), nullptr, nullptr), &g_free);
    const cmStringT file = cmJoinPath(folder, listName);
    return uri && cmReadFileItem(file).size > 0 && g_bookmark_file_load_from_file(list.get(), file.c_str(), nullptr)
           && g_bookmark_file_has_item(list.get(), uri.get());
}

cmStringT redirectRecentList(const cmStringT& folder)
{
    setenv(dataFolderVariable, folder.c_str(), 1);
    return cmJoinPath(folder, listName);
}
