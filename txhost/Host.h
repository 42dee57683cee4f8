#pragma once

#include "common/cmDictionary.h"
#include "common/cmMutex.h"
#include "common/cmString.h"
#include "editor/Editor.h"
#include "txhost/SharedLibrary.h"
#include "txhost/WorkingCopy.h"

#include <cstdint>
#include <map>
#include <stdexcept>
#include <string>

/// What the command line says for every command.
struct HostOptions {
    bool json = false;
    bool debug = false;
    std::map<std::int32_t, std::string> programs;  ///< by tool number, as the user named them; empty: looked for in PATH
    std::string cache;     ///< where this editor keeps private data; empty: in the user's folder for what can be made again
    std::string tool;      ///< the tool that every directory belongs to; empty: found out
    bool updates = false;  ///< show what is newer in the repository
    int intervalSeconds = 2;
    std::string revision;                    ///< where a history begins, or what is compared; empty: the newest, the working copy
    bool newest = false;                     ///< of a history the newest revision alone
    bool follow = false;                     ///< beyond renames
    bool working = false;                    ///< with an entry for the working file
    int budgetMs = 1000;                     ///< how long a reload check may take
    int maxStatusOutput = 64 * 1024 * 1024;  ///< bytes that one run of a tool may write
};

/// A failure to tell the user of; the program then ends with exit code 1.
class HostError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

/// Wrong usage that the command line alone could not show; exit code 2.
class UsageError : public HostError {
public:
    using HostError::HostError;
};

/// A headless Tamarin: an editor with its settings and macros that has loaded the module. Ending it stops the module's
/// threads and unloads it, as the editor does. For the thread that makes it.
class Host {
public:
    /// Throws HostError when the module cannot be loaded.
    explicit Host(const HostOptions& options);
    ~Host();
    Host(const Host&) = delete;
    Host& operator=(const Host&) = delete;

    Editor& editor() { return m_editor; }
    const Editor& editor() const { return m_editor; }
    const HostOptions& options() const { return m_options; }

    /// Where this editor keeps private data; null when there is no place of the user's own for them.
    const cmStringT& directory() const { return m_directory; }

    /// Throws HostError when the tool's program cannot be started.
    void requireTool(const Tool& tool) const;
    /// Absolute; null when there is none.
    const cmStringT& programPath(const Tool& tool) const { return m_programs.at(tool.number); }

    /// The last error that a tool of version control reported, its first line; null when there was none. A branch without
    /// commits is no error.
    cmStringT toolComplaint();

    /// Calls a registered function; its number, or 0 when it has none. Throws HostError when there is none of that name.
    std::int32_t call(cmROStringT name, const cmArray<CallArgument>& arguments);

private:
    void noteComplaint(cmROStringT debugLine);

    HostOptions m_options;
    cmDictionary<std::int32_t, cmStringT> m_programs;  ///< of each tool by its number, absolute; null when not found
    cmStringT m_directory;
    cmMutex m_complaintLock;
    cmStringT m_complaint CM_GUARDED_BY(m_complaintLock);
    Editor m_editor;
    SharedLibrary m_module;
};

/// What a failure status of the module's means, for people; null for a number that is none.
cmStringT meaningOfStatus(std::int32_t status);
/// "WHAT: STATUS, MEANING".
cmStringT failureText(cmROStringT what, std::int32_t status);
