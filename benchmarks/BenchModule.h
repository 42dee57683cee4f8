#pragma once

#include "common/cmString.h"
#include "editor/Editor.h"
#include "txapi/VersionControlTools.h"

#include <cstddef>
#include <cstdint>
#include <functional>
#include <string>

/// An editor that has initialised the module, with settings for one tool. Ending it stops the module's threads.
class BenchModule {
public:
    static constexpr std::int32_t gitType = txVCToolGit.number;
    static constexpr std::int32_t svnType = txVCToolSVN.number;

    /// `tool` is the program that the editor names for the tool with that watch type.
    explicit BenchModule(const std::string& tool, std::int32_t type = gitType);
    ~BenchModule();
    BenchModule(const BenchModule&) = delete;
    BenchModule& operator=(const BenchModule&) = delete;

    Editor& editor() { return m_editor; }
    /// Throws BenchError when there is no such function.
    std::int32_t call(cmROStringT name, const cmArray<CallArgument>& arguments);
    /// Asks for a status pass over `path`.
    void addPath(const std::string& path);
    /// Runs a status pass until the editor was told of all that it found. Throws BenchError when it fails.
    void statusPass(const std::string& path);
    /// Lets the editor run until `done` holds, asked every millisecond; throws BenchError when that takes too long.
    void waitFor(const std::function<bool()>& done, const char* what);

    bool hasPassBegun() const { return m_begun; }
    /// How many files the passes have marked, and forgets them.
    std::size_t takeMarkedFiles();

private:
    void forgetPass();

    cmStringT m_tool;
    std::int32_t m_type;
    Editor m_editor;
    bool m_begun = false;
    bool m_ended = false;
    bool m_changed = false;
    std::int32_t m_status = 0;
};

/// A program's path. Throws BenchError when it is not in PATH.
std::string programInPath(const char* name);
