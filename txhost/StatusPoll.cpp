#include "txhost/StatusPoll.h"

#include "common/CommandRunner.h"
#include "common/cmFile.h"
#include "common/cmPath.h"
#include "common/cmStringCatHelper.h"
#include "common/cmSystemPath.h"
#include "txhost/Console.h"
#include "txhost/JsonText.h"

#include <algorithm>
#include <filesystem>
#include <set>
#include <string>

namespace {

constexpr std::int32_t gitTool = 8;
constexpr std::int32_t gitWatchType = 8;
constexpr std::int32_t stateOutside = 2;

cmArray<cmStringT> tokens(cmROStringT list)
{
    cmArray<cmStringT> found;
    while (!list.empty()) {
        const std::size_t end = std::min(list.find('|'), list.size());
        found.push_back(list.substr(0, end));
        list.remove_prefix(std::min(end + 1, list.size()));
    }
    return found;
}

void collectRecords(const Editor& editor, StatusRound& round)
{
    for (const auto& [path, record] : editor.records()) {
        if (record.state == stateOutside)
            round.outside.push_back(path);
        if (!record.localStatus.isEmpty() || !record.repositoryStatus.isEmpty())
            round.files[path] = {tokens(record.localStatus), tokens(record.repositoryStatus)};
    }
}

}  // namespace

cmArray<cmStringT> watchedDirectories(const std::vector<std::string>& named)
{
    cmArray<cmStringT> directories;
    for (const std::string& name : named) {
        std::error_code error;
        const std::filesystem::path absolute = std::filesystem::absolute(cmSystemPath(name), error).lexically_normal();
        const bool exists = !name.empty() && !error && std::filesystem::exists(absolute, error);
        if (error)
            throw HostError(name + ": " + error.message());
        if (!exists)
            throw HostError("no such directory: " + name);
        const cmStringT text = cmPathText(absolute);
        if (!cmIsDirectory(text))
            throw HostError("not a directory: " + name);
        const cmStringT path(cmWithoutTrailingSeparator(text));
        if (std::find(directories.begin(), directories.end(), path) == directories.end())
            directories.push_back(path);
    }
    return directories;
}

bool StatusRound::isSwitchedOff() const
{
    return std::any_of(failed.begin(), failed.end(), [](const auto& failure) { return failure.second == statusOutputLimit; });
}

void printFailure(const cmStringT& directory, std::int32_t status, bool json)
{
    const cmStringT meaning = meaningOfStatus(status);
    if (json)
        console::printLine(
            jsonText({{"path", jsonString(directory)}, {"tool", "git"}, {"status", status}, {"meaning", jsonString(meaning)}}));
    console::printError(cmStringT(cmCat(directory) + ": " + std::to_string(status) + ", " + meaning));
}

StatusRound pollStatus(Host& host, const cmArray<cmStringT>& directories)
{
    Editor& editor = host.editor();
    StatusRound round;
    std::set<cmStringT> waiting(directories.begin(), directories.end());
    EditorObserver observer;
    observer.passEnded = [&](const cmStringT& path, std::int32_t status) {
        waiting.erase(path);
        if (status != 0)
            round.failed[path] = status;
        if (status != statusOutputLimit)
            return;
        for (const cmStringT& directory : waiting)  // the thread has stopped for good
            round.failed[directory] = status;
        waiting.clear();
    };
    editor.setObserver(observer);
    // The module only ever adds to a file's status; what it was before is the editor's to forget.
    editor.clearRecords(gitTool);
    for (const cmStringT& directory : directories) {
        const std::int32_t result = host.call("filewatcherAddPath", {directory, gitWatchType, 1});
        if (result != 0 && result != -1) {
            waiting.erase(directory);
            round.failed[directory] = result;
        }
    }
    editor.runUntil([&] { return waiting.empty() || console::wasInterrupted(); }, -1);
    // An interrupt may reach the tool as well, whose answer is then worth nothing.
    round.finished = waiting.empty() && !console::wasInterrupted();
    editor.setObserver({});
    collectRecords(editor, round);
    return round;
}
