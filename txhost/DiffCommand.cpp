#include "common/cmStringCatHelper.h"
#include "txhost/Browser.h"
#include "txhost/Commands.h"
#include "txhost/Console.h"
#include "txhost/HunkText.h"
#include "txhost/InterruptWatch.h"
#include "txhost/JsonText.h"

#include <algorithm>
#include <optional>
#include <string>
#include <utility>

namespace {

constexpr std::int32_t statusGitFailed = -1;  // or nothing differs: then no reason is told

/// Gives the module's values the types that they have in JSON. An empty list is no array: the module writes no elements into it.
void setTypes(Json& table)
{
    for (Json& entry : table) {
        if (entry.contains("binary"))
            entry["binary"] = entry.at("binary") != 0;
        for (const char* list : {"local", "staged", "hunks"}) {
            if (entry.contains(list) && !entry.at(list).is_array())
                entry[list] = Json::array();
        }
        for (const char* list : {"local", "staged"}) {  // git names a file with conflicts once for each side
            if (entry.contains(list))
                entry[list].erase(std::unique(entry[list].begin(), entry[list].end()), entry[list].end());
        }
    }
}

/// Prints one object for each element of the module's table.
void printObjects(Json& table)
{
    for (auto& [path, entry] : table.items()) {
        Json object;
        addName(object, "path", path);
        for (auto& [key, value] : entry.items()) {
            if (value.is_array() && key != "hunks")
                addNames(object, key, textsOf(value));
            else if (key == "oldPath" && value != "")
                addName(object, key, value.get_ref<const std::string&>());
            else if (value != "")
                object[key] = std::move(value);
        }
        printJson(std::move(object));
    }
}

/// Whether the table says of a working copy that nothing differs.
bool isWithoutChanges(const Json& table)
{
    return std::all_of(table.begin(), table.end(), [](const Json& entry) {
        return entry.contains("staged") && entry.at("staged").empty() && entry.value("local", Json::array()).empty();
    });
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

cmStringT colouredLine(cmROStringT line, std::size_t parents)
{
    const cmStringT text = console::printable(line);
    switch (kindOfLine(line, parents)) {
    case '+': return console::coloured(console::green, text);
    case '-': return console::coloured(console::red, text);
    case '\\': return console::coloured(console::grey, text);
    default: return text;
    }
}

/// What the diff says of a file beside its hunks, as sentences.
cmArray<cmStringT> remarksOn(const Json& entry)
{
    const auto text = [&entry](const char* key) { return console::printable(entry.at(key).get<std::string>()); };
    cmArray<cmStringT> remarks;
    if (const cmStringT from = text("oldPath"); !from.isEmpty())
        remarks.push_back(cmCat("from ") + from);
    const cmStringT oldMode = text("oldMode");
    const cmStringT newMode = text("newMode");
    if (oldMode.isEmpty() && !newMode.isEmpty())
        remarks.push_back(cmCat("new file, mode ") + newMode);
    else if (newMode.isEmpty() && !oldMode.isEmpty())
        remarks.push_back(cmCat("deleted file, mode ") + oldMode);
    else if (oldMode != newMode)
        remarks.push_back(cmCat("mode ") + oldMode + " -> " + newMode);
    if (entry.at("binary").get<bool>())
        remarks.push_back("binary file");
    return remarks;
}

void printFile(const std::string& path, const Json& entry)
{
    console::printLine(console::coloured(console::yellow, console::printable(path)));
    for (const cmStringT& remark : remarksOn(entry))
        console::printLine(console::coloured(console::grey, remark));
    for (const Json& hunk : entry.at("hunks")) {
        console::printLine(console::coloured(console::cyan, hunkHeader(hunk)));
        for (const Json& line : hunk.at("lines"))
            console::printLine(colouredLine(line.get<std::string>(), parentsOfHunk(hunk)));
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
        callInterruptibly(host, path, "_GitGetDiffInfo",
                          {path, host.programPath(gitTool), CallArgument::variable(variable), cmStringT(options.revision)});
    const cmStringT reason = host.editor().takeQueryError();
    const bool isEqual = status == statusGitFailed && reason.isNull();
    if (!isEqual && (status != 0 || !reason.isNull())) {
        printFailure(failureOf(status != 0 ? status : statusGitFailed, reason, path, gitTool.name), options.json);
        return 1;
    }
    VariableJson value(*host.editor().value(variable));
    Json& table = *value;
    setTypes(table);
    if (isEqual || isWithoutChanges(table)) {
        if (const std::optional<Failure> doubt = suspectSilence(host, path)) {
            printFailure(*doubt, options.json);
            return 1;
        }
    }
    if (options.json) {
        printObjects(table);
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
