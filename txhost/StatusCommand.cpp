#include "common/cmStringCatHelper.h"
#include "txhost/Commands.h"
#include "txhost/Console.h"
#include "txhost/JsonText.h"
#include "txhost/StatusPoll.h"

#include <algorithm>
#include <string>
#include <utility>

namespace {

/// What all objects about a file or directory begin with.
Json about(const cmStringT& path, cmROStringT tool)
{
    Json object;
    addName(object, "path", path);
    object["tool"] = jsonString(tool);
    return object;
}

void printOutside(const WatchedDirectory& directory, bool json)
{
    if (json) {
        Json object = about(directory.path, directory.tool.name);
        object["outside"] = true;
        printJson(std::move(object));
        return;
    }
    console::printLine(cmStringT(cmCat(console::coloured(console::grey, "outside       ")) + console::printable(directory.path)));
}

void printFile(const FileStatus& file, bool json)
{
    if (json) {
        Json object = about(file.path, file.tool);
        addNames(object, "local", file.local);
        addNames(object, "repository", file.repository);
        printJson(std::move(object));
        return;
    }
    std::string words;
    for (const cmStringT& token : file.local) {
        words += words.empty() ? "" : ",";
        words += token.view();
    }
    if (!file.repository.empty())
        words += words.empty() ? "outdated" : ",outdated";
    words.resize(std::max<std::size_t>(words.size() + 1, 14), ' ');
    console::printLine(cmStringT(cmCat(console::coloured(console::yellow, words)) + console::printable(file.path)));
}

/// A file that has become clean since another pass reported it cannot be taken back; nothing is said of it.
void printFiles(const FileStatuses& files, bool json)
{
    for (const auto& [key, file] : files) {
        if (!file.isClean())
            printFile(file, json);
    }
}

}  // namespace

int runStatus(const HostOptions& options, const std::vector<std::string>& named)
{
    const cmArray<WatchedDirectory> directories = watchedDirectories(named, options.tool);
    Host host(options);
    requireTools(host, directories);
    console::catchInterrupts();
    bool hasFailed = false;
    StatusListener listener;
    listener.passEnded = [&](const PassAnswer& answer) {
        if (answer.isOutside)
            printOutside(answer.directory, options.json);
        printFiles(answer.files, options.json);
        if (answer.failure)
            printFailure(*answer.failure, options.json);
        hasFailed = hasFailed || answer.failure;
    };
    listener.roundEnded = [&](const Tool&, const FileStatuses& files) { printFiles(files, options.json); };
    StatusPoll poll(host, directories, listener);
    for (const Tool* tool : poll.tools())
        poll.start(*tool);
    poll.runUntil([&] { return !poll.isWaiting() || console::wasInterrupted(); });
    if (!poll.isWaiting())
        return hasFailed ? 1 : 0;
    printFiles(poll.takeUnreported(), options.json);
    console::printInterrupted(cmStringT(cmCat("no answer from ") + poll.awaited()));
    for (const WatchedDirectory* directory : poll.unanswered()) {
        if (options.json)
            printJson(failureJson({Failure::stopped, "interrupted", directory->path, directory->tool.name}));
    }
    return 1;
}
