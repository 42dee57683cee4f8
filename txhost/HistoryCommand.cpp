#include "common/cmFile.h"
#include "common/cmPath.h"
#include "common/cmStringCatHelper.h"
#include "txhost/Browser.h"
#include "txhost/Commands.h"
#include "txhost/CommitJson.h"
#include "txhost/Console.h"
#include "txhost/FileDates.h"
#include "txhost/HistoryEntries.h"
#include "txhost/InterruptWatch.h"
#include "txhost/TextWidth.h"
#include "txhost/TimeText.h"

#include <algorithm>
#include <optional>
#include <string>
#include <utility>

namespace {

cmArray<cmStringT> wordsOf(cmROStringT text, char end)
{
    cmArray<cmStringT> words;
    while (!text.empty())
        words.push_back(cmTakeUntil(text, end));
    return words;
}

bool isWorkingFile(const Json& entry)
{
    return historyField(entry, "revision") == historyField(entry, "revisionCaption");
}

std::string padded(std::string text, std::size_t width)
{
    const std::size_t length = textWidth(text);
    return text.append(std::max(width, length) - length, ' ');
}

void printEntry(const Json& entry)
{
    GitCommitInfo commit;
    commit.subject = cmROStringT(historyField(entry, "subject"));
    if (!isWorkingFile(entry)) {
        commit.hash = cmROStringT(historyField(entry, "revision"));
        commit.otherParents = wordsOf(historyField(entry, "parents"), ' ');
        commit.authorName = cmROStringT(historyField(entry, "author"));
        commit.authorEmail = cmROStringT(historyField(entry, "email"));
        commit.message = cmROStringT(historyField(entry, "comment"));
        if (const std::string date = historyField(entry, "date"); !date.empty())
            commit.date = GitDateTime::pack(parseDateTime(date));
    }
    Json object = commitJson(commit);
    addNames(object, "files", wordsOf(historyField(entry, "affectedFilesDetails"), '\n'));
    printJson(std::move(object));
}

void printPlain(const Json& entry, std::size_t authorWidth, const std::string& name)
{
    constexpr std::size_t captionWidth = 7;
    constexpr std::size_t dateWidth = 19;
    const std::string comment = historyField(entry, "comment");
    cmROStringT lines = comment;
    cmStringT line = cmCat(console::coloured(console::yellow, padded(historyField(entry, "revisionCaption"), captionWidth)))
                     + "  " + console::coloured(console::grey, padded(historyField(entry, "date"), dateWidth)) + "  "
                     + console::printable(padded(historyField(entry, "author"), authorWidth)) + "  "
                     + console::printable(cmTakeUntil(lines, '\n'));
    if (const std::string then = historyField(entry, "curVersionFilename"); then != name)
        line += console::coloured(console::grey, cmStringT(cmCat("  (as ") + console::printable(then) + ")"));
    console::printLine(line);
}

}  // namespace

int runHistory(const HostOptions& options, const std::string& file)
{
    const cmStringT path(cmWithoutTrailingSeparator(absolutePaths({file}).front()));
    // The module asks the folder above the name, which may be in no repository, or in another one.
    const bool isDirectory = cmIsDirectory(path);
    const cmStringT asked = isDirectory ? cmJoinPath(path, ".") : path;
    Host host(options);
    host.requireTool(gitTool);
    const TXHVAR tree = txHvarAlloc();
    const std::int32_t status =
        callInterruptibly(host, path, "_GitGetHistoryInfo",
                          {asked, host.programPath(gitTool), CallArgument::variable(tree), cmStringT(options.revision),
                           options.newest ? 1 : 0, options.follow ? 1 : 0, options.working ? 1 : 0});
    if (status != 0) {
        printFailure(failureOf(status, host.editor().takeQueryError(), path, gitTool.name), options.json);
        return 1;
    }
    VariableJson value(*host.editor().value(tree));
    const cmArray<const Json*> entries = historyEntries(*value);
    if (entries.empty()) {
        const cmStringT folder(cmDirectoryOf(asked));
        if (const auto doubt = cmIsDirectory(folder) ? suspectSilence(host, folder) : std::nullopt) {
            printFailure(*doubt, options.json);
            return 1;
        }
        const bool exists = cmReadFileItem(path).state != cmItemState::missing;
        printFailure({Failure::own, exists ? "no revision in Git" : "no such file, and no revision in Git", path}, options.json);
        return 1;
    }
    std::size_t authorWidth = 0;
    for (const Json* entry : entries)
        authorWidth = std::max(authorWidth, textWidth(historyField(*entry, "author")));
    for (const Json* entry : entries) {
        if (options.json) {
            printEntry(*entry);
            continue;
        }
        if (!isWorkingFile(*entry) && historyField(*entry, "date").empty())
            console::noteMissingDate();
        printPlain(*entry, authorWidth, historyField(*entries.front(), "curVersionFilename"));
    }
    return 0;
}
