#include "txhost/browse/RepositoryQueries.h"

#include "common/cmDictionary.h"
#include "common/cmPath.h"
#include "common/cmStringCatHelper.h"
#include "txhost/CallVariable.h"
#include "txhost/CommitJson.h"
#include "txhost/CommitTable.h"
#include "txhost/HistoryEntries.h"
#include "txhost/TimeText.h"
#include "txhost/browse/ChangesTable.h"

#include <string>
#include <utility>

namespace {

constexpr std::int32_t statusGitFailed = -1;  // or nothing differs: then no reason is told
constexpr std::size_t sha1Digits = 40;

// What a commit without parents is compared with. Git knows these objects even when it has not stored them.
constexpr cmROStringT emptyTree = "4b825dc642cb6eb9a060e54bf8d69288fbee4904";
constexpr cmROStringT emptyTreeOfSHA256 = "6ef19b41225c5369f1c104d45d8d85efa9b057b53b14b4b9b939dd74decc5321";

/// What git diff compares for the changes that a commit has made.
cmStringT revisionOf(const CommitDetails& commit)
{
    if (!commit.parents.empty())
        return cmCat(commit.hash) + "^!";
    return cmCat(commit.hash.length() == sha1Digits ? emptyTree : emptyTreeOfSHA256) + ".." + commit.hash;
}

cmStringT textOf(const Json& value)
{
    return cmROStringT(value.get_ref<const std::string&>());
}

/// Replaces those files whose changes are known now; the others, as those of a merge that are as in one of its parents, stay.
void merge(cmArray<FileChange>& files, cmArray<FileChange> changed)
{
    cmSortedDictionary<cmStringT, FileChange> all;
    for (FileChange& file : files)
        all.emplace(file.path, std::move(file));
    for (FileChange& file : changed) {
        FileChange& known = all[file.path];
        file.isStaged = known.isStaged;
        file.isUnstaged = known.isUnstaged;
        known = std::move(file);
    }
    files.clear();
    for (auto& [path, file] : all)
        files.push_back(std::move(file));
}

void addFailure(cmStringT& failure, const cmStringT& further)
{
    if (failure.isNull())
        failure = further;
}

/// Whether git failed because the branch has no commit yet.
bool isOfMissingHead(cmROStringT failure)
{
    return failure.find("revision") != cmROStringT::npos && failure.find("'HEAD'") != cmROStringT::npos;
}

FileRevision revisionFrom(const Json& entry)
{
    FileRevision revision;
    revision.hash = cmROStringT(historyField(entry, "revision"));
    revision.author = cmROStringT(historyField(entry, "author"));
    revision.subject = cmROStringT(historyField(entry, "subject"));
    if (const std::string date = historyField(entry, "date"); !date.empty())
        revision.date = GitDateTime::pack(parseDateTime(date));
    return revision;
}

}  // namespace

MessageAnswer RepositoryQueries::addMessage(CommitDetails& details)
{
    const CallVariable variable;
    addCommitKeys(variable.handle());
    const std::int32_t status =
        m_host.call("_GitGetCommitInfo", {m_host.programPath(gitTool), m_root, details.hash, variable.argument()});
    addFailure(details.failure, failureOfQuery(status));
    if (status != 0)
        return MessageAnswer::failed;
    VariableJson value(*m_host.editor().value(variable.handle()));
    Json& table = *value;
    if (table.at("hash") == "")
        return MessageAnswer::notLoaded;
    completeCommitLists(table);
    details.parents = textsOf(table.at("otherParents"));
    if (table.at("parentHash") != "")
        details.parents.insert(details.parents.begin(), textOf(table.at("parentHash")));
    details.author = textOf(table.at("authorName"));
    details.email = textOf(table.at("authorEmail"));
    if (table.at("committerDate") != "")
        details.date = GitDateTime::pack(parseDateTime(textOf(table.at("committerDate"))));
    details.message = textsOf(table.at("longComment"));
    while (!details.message.empty() && details.message.back().isEmpty())
        details.message.pop_back();
    for (const cmStringT& path : eachOnce(textsOf(table.at("modifiedFiles"))))
        details.files.emplace_back().path = path;
    return MessageAnswer::complete;
}

void RepositoryQueries::addChanges(CommitDetails& details)
{
    merge(details.files, changes(revisionOf(details), details.failure));
}

CommitDetails RepositoryQueries::workingCopy()
{
    CommitDetails details;
    const CallVariable variable;
    const std::int32_t status = m_host.call("_GitGetDiffInfo", {m_root, m_host.programPath(gitTool), variable.argument(), ""});
    details.failure = failureOfQuery(status);
    if (status != 0)
        return details;
    VariableJson value(*m_host.editor().value(variable.handle()));
    details.files = workingCopyChangesOf(*value);
    return details;
}

void RepositoryQueries::addWorkingChanges(CommitDetails& details)
{
    if (details.files.empty())
        return;
    cmStringT failure;
    cmArray<FileChange> found = changes("HEAD", failure);
    for (const cmROStringT tree : {emptyTree, emptyTreeOfSHA256}) {  // a repository without commits has no HEAD
        if (!isOfMissingHead(failure))
            break;
        cmStringT further;
        found = changes(tree, further);
        if (further.isNull())
            failure = {};
    }
    addFailure(details.failure, failure);
    merge(details.files, std::move(found));
}

FileHistory RepositoryQueries::history(const FileQuestion& question)
{
    FileHistory history{question, {}, {}};
    const CallVariable tree;
    const std::int32_t status =
        m_host.call("_GitGetHistoryInfo", {cmJoinPath(m_root, cmNativeSeparators(question.path)), m_host.programPath(gitTool),
                                           tree.argument(), question.revision, 0, 1, 0});
    history.failure = failureOfQuery(status);
    if (status != 0)
        return history;
    VariableJson value(*m_host.editor().value(tree.handle()));
    for (const Json* entry : historyEntries(*value))
        history.revisions.push_back(revisionFrom(*entry));
    return history;
}

cmArray<FileChange> RepositoryQueries::changes(const cmStringT& revision, cmStringT& failure)
{
    const CallVariable variable;
    const std::int32_t status =
        m_host.call("_GitGetDiffInfo", {m_root, m_host.programPath(gitTool), variable.argument(), revision});
    const cmStringT reason = m_host.editor().takeQueryError();
    if (status == statusGitFailed && reason.isNull())
        return {};  // nothing differs
    addFailure(failure, status == 0 ? reason : failureOf(status, reason, {}, {}).message);
    if (status != 0)
        return {};
    VariableJson value(*m_host.editor().value(variable.handle()));
    return changesOf(*value, m_root);
}

/// Why the query that has just returned has failed, in words; null when it has not.
cmStringT RepositoryQueries::failureOfQuery(std::int32_t status)
{
    const cmStringT reason = m_host.editor().takeQueryError();
    return status == 0 ? reason : failureOf(status, reason, {}, {}).message;
}
