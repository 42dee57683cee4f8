#pragma once

#include "common/cmString.h"
#include "editor/Editor.h"
#include "txapi/VersionControlTools.h"

#include <cstddef>
#include <cstdint>
#include <functional>
#include <string>
#include <vector>

/// An editor that has initialised the module, with settings for one tool. The destructor stops the module's threads. For the
/// thread that creates it.
class BenchModule {
public:
    static constexpr std::int32_t gitType = txVCToolGit.number;
    static constexpr std::int32_t svnType = txVCToolSVN.number;

    /// `tool` is the path of the program for the tool with watch type `type`.
    explicit BenchModule(const std::string& tool, std::int32_t type = gitType);
    ~BenchModule();
    BenchModule(const BenchModule&) = delete;
    BenchModule& operator=(const BenchModule&) = delete;

    Editor& editor() { return m_editor; }
    /// Calls a registered function. Returns its integer result, or 0. Throws BenchError when there is no such function.
    std::int32_t call(cmROStringT name, const cmArray<CallArgument>& arguments);
    /// Queues a status pass over `path`.
    void addPath(const std::string& path);
    /// Runs a status pass and waits until the editor is notified of its changes. Throws BenchError when the pass fails.
    void statusPass(const std::string& path) { statusPasses({path}); }
    /// The same for several paths, which are queued at once.
    void statusPasses(const std::vector<std::string>& paths);
    /// Runs the editor's event loop until `done`, which is checked every millisecond, returns true. Throws BenchError after 20 s;
    /// its message names `what`.
    void waitFor(const std::function<bool()>& done, const char* what);

    /// Whether the pass that was queued last has begun.
    bool hasPassBegun() const { return m_begun; }
    /// Returns how many files have a local status, and removes all records.
    std::size_t takeMarkedFiles();

private:
    void queue(const std::string& path);
    void forgetPass();

    cmStringT m_tool;
    std::int32_t m_type;
    Editor m_editor;
    bool m_begun = false;
    std::size_t m_ended = 0;  ///< passes that ended since the last were queued
    bool m_changed = false;
    std::int32_t m_status = 0;  ///< of the pass that ended last; of one that failed, if there was one
};

/// The path of a program. Throws BenchError when it is not in PATH.
std::string programInPath(const char* name);
