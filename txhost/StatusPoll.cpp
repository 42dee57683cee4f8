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
#include <map>
#include <string>

namespace {

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

void collectRecords(const Editor& editor, bool updates, StatusRound& round)
{
    for (const auto& [path, record] : editor.records()) {
        if (record.state == txVCStateOutsideRepository && !round.failed.contains(path))
            round.outside.push_back(path);
        FileStatus file{toolNumbered(record.tool).name, tokens(record.localStatus), {}};
        if (updates)
            file.repository = tokens(record.repositoryStatus);
        if (!file.local.empty() || !file.repository.empty())
            round.files[path] = file;
    }
}

/// Asks for a pass over each directory. A directory that the module refuses fails at once and is no longer waited for.
void addPaths(Host& host, const cmArray<WatchedDirectory>& directories, std::map<cmStringT, Tool>& waiting, StatusRound& round)
{
    for (const WatchedDirectory& directory : directories) {
        std::int32_t result = host.call("filewatcherAddPath", {directory.path, directory.tool.number, 1});
        if (host.editor().setting(directory.tool.showFileStatusSetting) == 0)
            result = statusOutputLimit;  // the module has switched the tool off, and adds no path of it any more
        if (result == 0 || result == -1)
            continue;
        waiting.erase(directory.path);
        round.failed[directory.path] = {directory.tool.name, result};
    }
}

}  // namespace

cmArray<WatchedDirectory> watchedDirectories(const std::vector<std::string>& named, const std::string& tool)
{
    const Tool* chosen = toolNamed(tool);
    cmArray<WatchedDirectory> directories;
    for (const std::string& name : named) {
        if (name.empty())
            throw UsageError("an empty name is no directory");
        std::error_code error;
        const std::filesystem::path absolute = std::filesystem::absolute(cmSystemPath(name), error).lexically_normal();
        const bool exists = !error && std::filesystem::exists(absolute, error);
        if (error)
            throw HostError(name + ": " + error.message());
        if (!exists)
            throw HostError("no such directory: " + name);
        const cmStringT text = cmPathText(absolute);
        if (!cmIsDirectory(text))
            throw HostError("not a directory: " + name);
        const cmStringT path(cmWithoutTrailingSeparator(text));
        if (std::none_of(directories.begin(), directories.end(), [&](const WatchedDirectory& one) { return one.path == path; }))
            directories.push_back({path, chosen ? *chosen : findTool(path)});
    }
    return directories;
}

void requireTools(const Host& host, const cmArray<WatchedDirectory>& directories)
{
    for (const WatchedDirectory& directory : directories)
        host.requireTool(directory.tool);
}

bool StatusRound::isSwitchedOff(std::size_t directories) const
{
    return failed.size() == directories && std::all_of(failed.begin(), failed.end(), [](const auto& failure) {
               return failure.second.status == statusOutputLimit;
           });
}

void printFailure(const cmStringT& directory, const FailedPass& failure, bool json)
{
    const cmStringT meaning = failure.reason.isNull() ? meaningOfStatus(failure.status) : failure.reason;
    if (json)
        console::printLine(jsonText({{"path", jsonString(directory)},
                                     {"tool", jsonString(failure.tool)},
                                     {"status", failure.status},
                                     {"meaning", jsonString(meaning)}}));
    console::printError(
        cmStringT(cmCat(directory) + ": " + failure.tool + ": " + std::to_string(failure.status) + ", " + meaning));
}

StatusRound pollStatus(Host& host, const cmArray<WatchedDirectory>& directories)
{
    Editor& editor = host.editor();
    StatusRound round;
    std::map<cmStringT, Tool> waiting;
    for (const WatchedDirectory& directory : directories)
        waiting.emplace(directory.path, directory.tool);
    EditorObserver observer;
    std::map<cmStringT, cmStringT> reasons;  // of the passes that failed
    observer.passFailed = [&](const cmStringT& path, const cmStringT& reason) { reasons[path] = reason; };
    observer.passEnded = [&](const cmStringT& path, std::int32_t status) {
        const auto ended = waiting.find(path);
        if (ended == waiting.end())
            return;
        const Tool tool = ended->second;
        waiting.erase(ended);
        if (status != 0)
            round.failed[path] = {tool.name, status, reasons[path]};
        if (status != statusOutputLimit)
            return;
        std::erase_if(waiting,
                      [&](const auto& other) {  // the tool's thread has ended for good, so its other directories fail as well
                          if (other.second.number == tool.number)
                              round.failed[other.first] = {tool.name, status};
                          return other.second.number == tool.number;
                      });
    };
    editor.setObserver(observer);
    // For these two tools the module only adds to a file's status, so the records of the previous round are removed.
    editor.clearRecords(gitTool.number);
    editor.clearRecords(p4Tool.number);
    addPaths(host, directories, waiting, round);
    editor.runUntil([&] { return waiting.empty() || console::wasInterrupted(); }, -1);
    // Ctrl-C may have ended the tool as well; its answer is incomplete then.
    round.finished = waiting.empty() && !console::wasInterrupted();
    editor.setObserver({});
    collectRecords(editor, host.options().updates, round);
    return round;
}
