#include "common/CommandQuoting.h"
#include "common/CommandRunner.h"
#include "common/cmStringCatHelper.h"
#include "txhost/Browser.h"
#include "txhost/Commands.h"
#include "txhost/CommitJson.h"
#include "txhost/CommitTable.h"
#include "txhost/Console.h"
#include "txhost/InterruptWatch.h"
#include "txhost/WaitProgress.h"

#include <optional>
#include <string>
#include <utility>

namespace {

constexpr std::int32_t statusGitFailed = -1;

/// git's words about a revision whose commit the repository does not hold, such as that of a damaged one; null when there is
/// no such revision.
cmStringT complaintOfMissingObject(const Host& host, const cmStringT& repository, cmROStringT revision)
{
    const CaptureResult result =
        captureCommand(cmStringT(cmCat("\"") + host.programPath(gitTool) + "\" rev-list --max-count=1 --end-of-options "
                                 + quoteArgument(revision)),
                       spawnScannedCommand, repository, {}, [](cmROStringT) {});
    cmROStringT words = result.errorOutput;
    const cmROStringT first = cmWithoutLineEnd(cmTakeUntil(words, '\n'));
    return first.starts_with("fatal: bad object") ? cmStringT(first) : cmStringT();
}

/// The full hash of the commit that `revision` names. Throws HostError when there is none.
cmStringT fullHash(const Host& host, const cmStringT& repository, cmROStringT revision, const InterruptWatch& interrupts)
{
    const cmStringT commit = cmCat(revision) + "^{commit}";
    cmStringT output("");
    const CaptureResult result = captureCommand(
        cmStringT(cmCat("\"") + host.programPath(gitTool) + "\" rev-parse --verify --end-of-options " + quoteArgument(commit)),
        spawnScannedCommand, repository, {}, [&output](cmROStringT bytes) { output += bytes; });
    interrupts.check();
    if (result.status != 0)
        throw HostError(failureOf(result.status, result.failure, repository, gitTool.name));
    for (cmROStringT lines = output.view().substr(0, output.view().rfind('\n') + 1); !lines.empty();) {
        const cmROStringT line = cmTakeUntil(lines, '\n');
        if (!line.starts_with('-'))
            return line;
    }
    cmROStringT error = result.errorOutput;
    const cmROStringT first = cmWithoutLineEnd(cmTakeUntil(error, '\n'));
    if (first == "fatal: Needed a single revision") {
        const cmStringT damage = complaintOfMissingObject(host, repository, revision);
        if (damage.isNull())
            throw HostError(repository, "no such commit: " + std::string(revision));
        throw HostError({statusGitFailed, damage, repository, gitTool.name});
    }
    throw HostError({statusGitFailed, first.empty() ? "the program says nothing; is it git?" : first, repository, gitTool.name});
}

cmStringT joinedLines(const cmArray<cmStringT>& lines)
{
    cmStringT text("");
    for (std::size_t i = 0; i < lines.size(); ++i)
        text += cmStringT(cmCat(i > 0 ? "\n" : "") + lines[i]);
    return text;
}

void printCommit(const Json& table, Browser& browser)
{
    const std::int32_t last = browser.count() - 1;  // the commit; before it comes the working copy
    GitCommitInfo commit;
    browser.commit(last, commit);
    commit.message = joinedLines(textsOf(table.at("longComment")));
    Json object = commitJson(commit);
    addNames(object, "branches", browser.branchNames(commit));
    addNames(object, "tags", browser.tags(last));
    addNames(object, "files", eachOnce(textsOf(table.at("modifiedFiles"))));
    const Json& byParent = table.at("modifiedFilesByParent");
    const cmArray<cmStringT> parents = parentsOf(commit);
    for (std::size_t i = 0; i < byParent.size(); ++i) {
        Json& files = object["filesByParent"].emplace_back();
        files["parent"] = jsonString(parents.at(i));
        addNames(files, "files", textsOf(byParent.at(i)));
    }
    printJson(std::move(object));
}

void printPlain(const Json& table)
{
    const auto text = [&table](const char* key) {
        const Json& value = table.at(key);
        return console::printable(value.is_string() ? value.get<std::string>() : std::string());
    };
    const auto printNamed = [](cmROStringT name, const cmStringT& value) {
        if (!value.isEmpty())
            console::printLine(cmStringT(cmCat(console::coloured(console::grey, name)) + value));
    };
    printNamed("commit  ", console::coloured(console::yellow, text("hash")));
    printNamed("parent  ", text("parentHash"));
    for (const Json& hash : table.at("otherParents"))
        printNamed("parent  ", console::printable(hash.get<std::string>()));
    printNamed("author  ", cmStringT(cmCat(text("authorName")) + " <" + text("authorEmail") + ">"));
    printNamed("date    ", text("committerDate"));
    for (const Json& line : table.at("longComment"))
        console::printLine(cmStringT(cmCat("    ") + console::printable(line.get<std::string>())));
    const auto printFiles = [&printNamed](const Json& names) {
        for (const Json& name : names)
            printNamed("file    ", console::printable(name.get<std::string>()));
    };
    const Json& byParent = table.at("modifiedFilesByParent");
    if (byParent.empty())
        printFiles(table.at("modifiedFiles"));
    for (std::size_t i = 0; i < byParent.size(); ++i) {
        const Json& parent = i == 0 ? table.at("parentHash") : table.at("otherParents").at(i - 1);
        printNamed("against ", console::printable(parent.get<std::string>()));
        printFiles(byParent.at(i));
    }
}

}  // namespace

int runShow(const HostOptions& options, const std::string& repository)
{
    const cmStringT path = browsedDirectory(repository);
    Host host(options);
    host.requireTool(gitTool);
    std::optional<InterruptWatch> interrupts(std::in_place, path);
    std::optional<WaitProgress> progress(std::in_place, cmCat(gitTool.name) + " in " + path);
    const cmStringT hash = fullHash(host, path, options.revision, *interrupts);
    const TXHVAR variable = txHvarAlloc();
    addCommitKeys(variable);
    // _GitGetCommitInfo needs the commit in the browser's model, so that one commit is loaded.
    Browser browser(host, path, cmStringT(cmCat("--max-count=1 ") + quoteArgument(hash)));
    browser.waitFor([] { return false; });
    interrupts->check();
    const std::int32_t status =
        host.call("_GitGetCommitInfo", {host.programPath(gitTool), path, hash, CallArgument::variable(variable)});
    interrupts->check();
    progress.reset();
    interrupts.reset();
    // With a reason but no status, the commit is known, but not which of its files differ from which parent.
    const cmStringT reason = host.editor().takeQueryError();
    if (status != 0 || !reason.isNull())
        printFailure(failureOf(status != 0 ? status : statusGitFailed, reason, path, gitTool.name), options.json);
    if (status != 0)
        return 1;
    VariableJson value(*host.editor().value(variable));
    Json& table = *value;
    if (table.at("hash") == "") {
        if (browser.reportFailures() != 0)
            return 1;
        throw HostError(path, "the module has not loaded the commit " + std::string(hash.view()));
    }
    completeCommitLists(table);
    if (options.json) {
        printCommit(table, browser);
    } else {
        if (table.at("committerDate") == "")
            console::noteMissingDate();
        printPlain(table);
    }
    return reason.isNull() ? 0 : 1;
}
