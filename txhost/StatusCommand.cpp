#include "common/cmStringCatHelper.h"
#include "txhost/Commands.h"
#include "txhost/Console.h"
#include "txhost/JsonText.h"
#include "txhost/StatusPoll.h"

namespace {

Json jsonList(const cmArray<cmStringT>& words)
{
    Json list = Json::array();
    for (const cmStringT& word : words)
        list.push_back(jsonString(word));
    return list;
}

cmStringT joined(const cmArray<cmStringT>& words)
{
    cmStringT text("");
    for (const cmStringT& word : words) {
        text += text.isEmpty() ? "" : ",";
        text += word;
    }
    return text;
}

void printOutside(const cmStringT& path, bool json)
{
    if (json)
        console::printLine(jsonText({{"path", jsonString(path)}, {"tool", "git"}, {"outside", true}}));
    else
        console::printLine(cmStringT(cmCat(console::coloured(console::grey, "outside     ")) + console::printable(path)));
}

void printFile(const cmStringT& path, const FileStatus& status, bool json)
{
    if (json) {
        const Json record{{"path", jsonString(path)},
                          {"tool", "git"},
                          {"local", jsonList(status.local)},
                          {"repository", jsonList(status.repository)}};
        console::printLine(jsonText(record));
        return;
    }
    const cmStringT word = cmCat(joined(status.local)) + "         ";
    console::printLine(
        cmStringT(cmCat(console::coloured(console::yellow, word.view().substr(0, 12))) + console::printable(path)));
}

}  // namespace

int runStatus(const HostOptions& options, const std::vector<std::string>& named)
{
    const cmArray<cmStringT> directories = watchedDirectories(named);
    Host host(options);
    host.requireGit();
    console::catchInterrupts();
    const StatusRound round = pollStatus(host, directories);
    for (const cmStringT& path : round.outside)
        printOutside(path, options.json);
    for (const auto& [path, status] : round.files)
        printFile(path, status, options.json);
    for (const auto& [path, status] : round.failed)
        printFailure(path, status, options.json);
    if (!round.finished)
        console::printError("interrupted");
    return round.finished && round.failed.empty() ? 0 : 1;
}
