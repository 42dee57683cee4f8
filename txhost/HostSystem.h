#pragma once

#include "common/cmString.h"

#include <cstdint>

/// A dynamic library. It is unloaded with the object. For one thread at a time.
class SharedLibrary {
public:
    SharedLibrary() = default;
    SharedLibrary(const SharedLibrary&) = delete;
    SharedLibrary& operator=(const SharedLibrary&) = delete;
    ~SharedLibrary() { unload(); }

    /// Loads the library `name`, such as "filewatcher", from the folder of this program, else from the one for libraries
    /// of the installation that the program is in. It takes the place of the one that is loaded. Returns null on success, else
    /// the reason of the failure.
    cmStringT load(cmROStringT name);
    /// An exported function, valid while the library is loaded; null when there is none. `Function` must be its type.
    template <class Function>
    Function* function(const char* name) const
    {
        return reinterpret_cast<Function*>(address(name));
    }
    void unload();

private:
    using AnyFunction = void (*)();
    AnyFunction address(const char* name) const;

    void* m_handle = nullptr;
};

/// Ends the processes that this one has started, and those that they have started. Does not wait. Any thread.
void endChildProcesses();

/// The number by which the system knows the calling thread.
std::uint32_t currentThreadNumber();
/// Like endChildProcesses, but only those that this thread of the program has started. Where the system does not tell them apart
/// (Windows, a kernel without /proc/PID/task/TID/children) it ends none. Any thread.
void endChildProcessesOf(std::uint32_t threadNumber);

/// The command line, in the grammar of CommandLine.h, that has the system's shell run `command`.
cmStringT shellCommandLine(cmROStringT command);

/// Whether the system's list of recent documents holds the file `path`, which the module has added. Always true where the list
/// cannot be asked: the shell of Windows gives no answer.
bool isOnRecentList(const cmStringT& path);

/// Makes this process keep its list of recent documents in `folder` where the list is a file, so that a scratch file does not
/// show up on the user's desktop. Returns the path of that file; null where the list is no file. Call it before other threads
/// run.
cmStringT redirectRecentList(const cmStringT& folder);
