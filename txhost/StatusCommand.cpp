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

void printFile(const cmStringT& path, const FileStatus& status, bool json)
{
    if (json) {
        const Json record{{"path", jsonString(path)},
                          {"tool", jsonString(status.tool)},
                          {"local", jsonList(status.local)},
                          {"repository", jsonList(status.repository)}};
        console::printLine(jsonText(record));
        return;
    }
    std::string words;
    for (const cmStringT& token : status.local) {
        words += words.empty() ? "" : ",";
        words += token.view();
    }
    if (!status.repository.empty())
        words += words.empty() ? "outdated" : ",outdated";
    words.resize(std::max<std::size_t>(words.size() + 1, 14), ' ');
    console::printLine(cmStringT(cmCat(console::coloured(console::yellow, words)) + console::printable(path)));
}

}  // namespace

int runStatus(const HostOptions& options, const std::vector<std::string>& named)
{
    const cmArray<WatchedDirectory> directories = watchedDirectories(named, options.tool);
    Host host(options);
    requireTools(host, directories);
    console::catchInterrupts();
    const StatusRound round = pollStatus(host, directories);
    for (const cmStringT& path : round.outside)
        printOutside(path, options.json);
    for (const auto& [path, status] : round.files)
        printFile(path, status, options.json);
    for (const auto& [path, failure] : round.failed)
        printFailure(path, failure, options.json);
    if (!round.finished)
        console::printInterrupted();
    return round.finished && round.failed.empty() ? 0 : 1;
}
