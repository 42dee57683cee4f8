// A small host of the module, on the stand-in editor. docs/embedding.md tells the rules that it keeps.

#include "Module.h"
#include "common/cmString.h"
#include "editor/Editor.h"
#include "filewatcher/git/commits/GitCommitInfo.h"
#include "filewatcher/git/graph/GraphRow.h"
#include "txapi/EditorNumbers.h"
#include "txapi/VersionControlTools.h"

#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <optional>
#include <string>

namespace {

constexpr const char* git = "git";  // searched in PATH
constexpr std::int32_t patienceMs = 60000;
constexpr std::int32_t mostCommits = 10;

/// What the module asks of an editor for the status of Git working copies.
void offerSettings(Editor& editor)
{
    editor.defineMacro(txVCToolGit.exePathMacro, [] { return cmStringT(git); });
    editor.setSetting(txVCToolGit.intervalSetting, 2);
    editor.setSetting(txVCToolGit.showFileStatusSetting, 1);
    editor.setSetting(txVCMaxOutputSetting, 64 * 1024 * 1024);
}

/// How a piece of background work has ended.
struct Outcome {
    std::optional<std::int32_t> status;
    cmStringT reason;

    /// Runs the event loop until the work has ended. Prints why it failed.
    bool await(Editor& editor, const char* work) const
    {
        if (!editor.runUntil([this] { return status.has_value(); }, patienceMs))
            std::fprintf(stderr, "%s: no answer\n", work);
        else if (*status != 0)
            std::fprintf(stderr, "%s: %d %s\n", work, *status, reason.c_str());
        return status == 0;
    }
};

/// Prints the files below `directory` that git calls modified.
bool showStatus(Editor& editor, const cmStringT& directory)
{
    Outcome pass;
    EditorObserver observer;
    observer.passFailed = [&](const cmStringT&, const cmStringT& reason) { pass.reason = reason; };
    observer.passEnded = [&](const cmStringT&, std::int32_t status) { pass.status = status; };
    editor.setObserver(observer);
    editor.call("filewatcherAddPath", {directory, txVCToolGit.number, 1});
    const bool isAnswered = pass.await(editor, "status");
    editor.setObserver({});  // it refers to `pass`
    for (const auto& [path, record] : editor.records())
        std::printf("%s: %s\n", path.c_str(), record.localStatus.c_str());
    return isAnswered;
}

/// The function that the module has set at a callback slot; docs/embedding.md has its type.
template <class Function>
Function* callback(const Editor& editor, std::int32_t slot)
{
    return reinterpret_cast<Function*>(editor.callback(slot));
}

/// Prints the newest commits, each in its column of the graph.
bool showCommits(Editor& editor, const cmStringT& directory)
{
    Outcome load;
    EditorObserver observer;
    observer.gitLoadEnded = [&](const cmStringT&, std::int32_t part, std::int32_t status, const cmStringT& message) {
        if (part == txGitLoadCommits)
            load = {status, message};
    };
    editor.setObserver(observer);
    editor.call("_GitGetBranchInfo", {directory, git});
    const bool isLoaded = load.await(editor, "log");
    editor.setObserver({});
    if (!isLoaded)
        return false;
    auto* count = callback<std::int32_t()>(editor, txSlotGitCount);
    auto* copyCommit = callback<std::int32_t(std::int64_t, GitCommitInfo&)>(editor, txSlotGitCommit);
    auto* copyRow = callback<std::int32_t(std::int64_t, GraphRow&)>(editor, txSlotGitGraphRow);
    for (std::int32_t commit = 0; commit < count() && commit < mostCommits; ++commit) {
        GitCommitInfo info;
        GraphRow row;
        if (copyCommit(commit, info) == 0 && copyRow(commit, row) == 0)
            std::printf("%*s* %.7s %s\n", 2 * row.column, "", info.hash.c_str(), info.subject.c_str());
    }
    return true;
}

}  // namespace

/// host MODULE: shows the Git working copy that the current directory is in.
int main(int count, char** words)
{
    Editor editor;  // this thread is the editor's thread from now on
    offerSettings(editor);
    const Module module(count == 2 ? words[1] : "");
    auto* init = reinterpret_cast<std::int32_t (*)()>(module.function("txDllInit"));
    if (!init || init() != 0) {
        std::fprintf(stderr, "usage: host MODULE\n");
        return 2;
    }
    const std::u8string current = std::filesystem::current_path().u8string();
    const cmStringT directory(reinterpret_cast<const char*>(current.c_str()));
    const bool isShown = showStatus(editor, directory) && showCommits(editor, directory);
    editor.call("filewatcher_stop_async_work", {});
    module.function("txDllExit")();
    return isShown ? 0 : 1;  // the module is unloaded, and then the services go
}
