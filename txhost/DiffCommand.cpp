#include "common/cmStringCatHelper.h"
#include "txhost/Browser.h"
#include "txhost/Commands.h"
#include "txhost/Console.h"
#include "txhost/InterruptWatch.h"
#include "txhost/JsonText.h"
#include "txhost/StatusPoll.h"

#include <string>

namespace {

constexpr std::int32_t statusGitFailed = -1;  // or nothing differs: then no reason is told

/// Turns every empty list into an array: the module writes no elements into an empty list, so its variable is no array.
void makeListsArrays(Json& table)
{
    for (Json& entry : table) {
        for (Json& list : entry) {
            if (!list.is_array())
                list = Json::array();
        }
    }
}

void printChangedFiles(const Json& entry)
{
    const auto print = [&entry](const char* list, const cmStringT& caption) {
        if (!entry.contains(list))
            return;
        for (const Json& name : entry.at(list))
            console::printLine(cmStringT(cmCat(caption) + console::printable(name.get<std::string>())));
    };
    print("local", console::coloured(console::yellow, "local   "));
    print("staged", console::coloured(console::green, "staged  "));
}

cmStringT rangesOf(const Json& hunk)
{
    const auto number = [&hunk](const char* name) { return std::to_string(hunk.at(name).get<std::int64_t>()); };
    return cmCat("@@ -") + number("oldStart") + "," + number("oldCount") + " +" + number("newStart") + "," + number("newCount")
           + " @@";
}

cmStringT colouredLine(cmROStringT line)
{
    const char kind = line.empty() ? ' ' : line.front();
    if (kind == ' ')
        return console::printable(line);
    const int colour = kind == '+' ? console::green : kind == '-' ? console::red : console::grey;
    return console::coloured(colour, console::printable(line));
}

void printFile(const std::string& path, const Json& entry)
{
    console::printLine(console::coloured(console::yellow, console::printable(path)));
    for (const Json& hunk : entry.at("hunks")) {
        console::printLine(console::coloured(console::cyan, rangesOf(hunk)));
        for (const Json& line : hunk.at("lines"))
            console::printLine(colouredLine(line.get<std::string>()));
    }
}

}  // namespace

int runDiff(const HostOptions& options, const std::string& repository)
{
    const cmStringT path = browsedDirectory(repository);
    Host host(options);
    host.requireTool(gitTool);
    const TXHVAR variable = txHvarAlloc();
    const std::int32_t status =
        callInterruptibly(host, "_GitGetDiffInfo",
                          {path, host.programPath(gitTool), CallArgument::variable(variable), cmStringT(options.revision)});
    const cmStringT reason = host.editor().takeQueryError();
    if (status == statusGitFailed && reason.isNull()) {
        if (options.json)
            console::printLine("{}");
        return 0;
    }
    if (status != 0 || !reason.isNull()) {
        printFailure(path, {gitTool.name, status != 0 ? status : statusGitFailed, reason}, options.json);
        return 1;
    }
    VariableJson value(*host.editor().value(variable));
    Json& table = *value;
    makeListsArrays(table);
    if (options.json) {
        console::printLine(jsonText(table));
        return 0;
    }
    for (const auto& [name, entry] : table.items()) {
        if (options.revision.empty())
            printChangedFiles(entry);
        else
            printFile(name, entry);
    }
    return 0;
}
