#include "common/cmStringCatHelper.h"
#include "txhost/Commands.h"
#include "txhost/Console.h"
#include "txhost/JsonText.h"
#include "txhost/StatusPoll.h"

#include <algorithm>
#include <string>

namespace {

Json jsonList(const cmArray<cmStringT>& words)
{
    Json list = Json::array();
    for (const cmStringT& word : words)
        list.push_back(jsonString(word));
    return list;
}

void printOutside(const cmStringT& path, bool json)
{
    if (json)
        console::printLine(jsonText({{"path", jsonString(path)}, {"tool", "git"}, {"outside", true}}));
    else
        console::printLine(cmStringT(cmCat(console::coloured(console::grey, "outside       ")) + console::printable(path)));
}

void printFile(const FileStatus& file, bool json)
{
    if (json) {
        const Json record{{"path", jsonString(file.path)},
                          {"tool", jsonString(file.tool)},
                          {"local", jsonList(file.local)},
                          {"repository", jsonList(file.repository)}};
        console::printLine(jsonText(record));
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
            printOutside(answer.directory.path, options.json);
        printFiles(answer.files, options.json);
        if (answer.failure)
            printFailure(answer.directory.path, *answer.failure, options.json);
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
    return 1;
}
