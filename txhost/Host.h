#pragma once

#include "common/cmDictionary.h"
#include "common/cmString.h"
#include "editor/Editor.h"
#include "txhost/Failure.h"
#include "txhost/HostSystem.h"
#include "txhost/WorkingCopy.h"

#include <cstdint>
#include <map>
#include <string>

/// The options of the command line.
struct HostOptions {
    bool json = false;
    bool debug = false;
    std::map<std::int32_t, std::string> programs;  ///< name or path by tool number; empty: searched in PATH
    std::string cache;                             ///< folder for private data; empty: below the user's cache folder
    std::string tool;                              ///< name of the tool of every directory; empty: detected by directory
    bool updates = false;                          ///< status: report also what is newer in the repository
    double intervalSeconds = 2;                    ///< watch: time between two checks
    int patienceMs = 2000;                         ///< status, watch: how long a tool may be silent before it is named
    std::string revision;                          ///< history: the first revision; show: the commit; diff: what is compared
    bool newest = false;                           ///< history: only the newest revision
    bool follow = false;                           ///< history: continue beyond renames
    bool working = false;                          ///< history: begin with an entry for the working file
    int budgetMs = 1000;                           ///< reload: how long a check may take
    int maxStatusOutput = 64 * 1024 * 1024;        ///< status, watch: how many bytes one run of a tool may write
};

/// A headless Tamarin: an editor with settings and macros that has loaded the module. As the editor does, the destructor stops
/// the module's threads and unloads it. For the thread that creates it, which is the editor's thread.
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

    /// The folder for private data; null when the user has no cache folder.
    const cmStringT& directory() const { return m_directory; }

    /// Throws HostError when there is no program for the tool.
    void requireTool(const Tool& tool) const;
    /// The absolute path of the tool's program; null when there is none.
    const cmStringT& programPath(const Tool& tool) const { return m_programs.at(tool.number); }

    /// Calls a registered function. Returns its integer result, or 0 when it has none. Throws HostError when there is no function
    /// of that name or the arguments do not suit it.
    std::int32_t call(cmROStringT name, const cmArray<CallArgument>& arguments);

private:
    HostOptions m_options;
    cmDictionary<std::int32_t, cmStringT> m_programs;  ///< absolute path by tool number; null when not found
    cmStringT m_directory;
    Editor m_editor;
    SharedLibrary m_module;
};
