#include "filewatcher/git/query/SVCHistoryInfo.h"

#include "filewatcher/StatusCodes.h"
#include "filewatcher/bridge/EditorVariables.h"
#include "filewatcher/git/commits/GitDateTime.h"
#include "filewatcher/git/commits/ShortHash.h"

#include <utility>

namespace {

constexpr cmROStringT workingFile = "Working file";
constexpr std::int32_t noEntry = -1;
constexpr std::int32_t rootEntry = 0;

/// The fields of one "SVCHistoryInfo" instance. A null text is stored as "(null)".
struct HistoryEntry {
    cmStringT revision;
    cmStringT author;
    cmStringT date;
    cmStringT comment;
    cmStringT affectedFiles;
    cmStringT caption;
    cmStringT fileName;
    cmStringT parents;
    cmStringT email;
    cmStringT subject;
    std::int32_t picture = 0;
    std::int32_t leftSibling = noEntry;
    std::int32_t rightSibling = noEntry;
    std::int32_t firstChild = noEntry;
    std::int32_t parent = noEntry;
    bool expandable = false;
};

cmStringT joined(const cmArray<cmStringT>& words, cmROStringT between)
{
    cmStringT text("");
    for (const cmStringT& word : words) {
        text += text.isEmpty() ? "" : between;
        text += word;
    }
    return text;
}

HistoryEntry entryOf(const GitHistoryRecord& record, cmROStringT path)
{
    const GitCommitInfo& commit = record.commit;
    const bool working = commit.hash == workingFile;
    HistoryEntry entry;
    entry.revision = commit.hash;
    entry.author = commit.authorName;
    entry.date = commit.date.text();
    entry.comment = commit.message.isNull() ? commit.subject : commit.message;
    entry.caption = working ? commit.hash : cmStringT(shortHash(commit.hash));
    if (!working)
        entry.affectedFiles = joined(record.files, "\n");
    // With --follow a record lists the path that the file had at that commit.
    entry.fileName = record.files.size() == 1 ? record.files.front() : cmStringT(path);
    cmArray<cmStringT> parents = commit.otherParents;
    if (!commit.firstParent.isEmpty())
        parents.insert(parents.begin(), commit.firstParent);
    entry.parents = joined(parents, " ");
    entry.email = commit.authorEmail;
    entry.subject = commit.subject;
    return entry;
}

std::int32_t storeEntry(TXHVAR element, const HistoryEntry& entry)
{
    if (!element)
        return statusGitFailed;
    const std::int32_t status = txHvarInitInstance(element, "SVCHistoryInfo");
    if (status < 0)
        return status;
    const cmStringT unknown;
    for (const auto& [field, text] : {std::pair<TXPSZ, const cmStringT&>{"revision", entry.revision},
                                      {"author", entry.author},
                                      {"date", entry.date},
                                      {"comment", entry.comment},
                                      {"affectedFilesDetails", entry.affectedFiles},
                                      {"revisionCaption", entry.caption},
                                      {"tagNames", unknown},
                                      {"changelist", unknown},
                                      {"curVersionFilename", entry.fileName},
                                      {"parents", entry.parents},
                                      {"email", entry.email},
                                      {"subject", entry.subject}}) {
        if (const TXHVAR variable = txHvarField(element, field))
            txHvarSetString(variable, text.isNull() ? cmStringT("(null)") : text);
    }
    for (const auto& [field, number] : {std::pair<TXPSZ, std::int32_t>{"picIndex", entry.picture},
                                        {"lsibIndex", entry.leftSibling},
                                        {"rsibIndex", entry.rightSibling},
                                        {"firstChildIndex", entry.firstChild},
                                        {"parentIndex", entry.parent},
                                        {"expandable", entry.expandable ? 1 : 0},
                                        {"hidden", 0}}) {
        if (const TXHVAR variable = txHvarField(element, field))
            txHvarSetInt(variable, number);
    }
    return 0;
}

}  // namespace

GitHistoryRecord workingFileRecord()
{
    GitHistoryRecord record;
    record.commit.hash = workingFile;
    record.commit.subject = "Not yet committed";
    return record;
}

std::int32_t fillHistoryTree(TXHVAR array, const cmArray<GitHistoryRecord>& records, cmROStringT path)
{
    const auto count = static_cast<std::int32_t>(records.size());
    shortenEditorArray(array, records.size() + 1);
    HistoryEntry root;
    root.revision = "root";
    root.caption = "root";
    root.firstChild = count > 0 ? rootEntry + 1 : noEntry;
    root.expandable = true;
    std::int32_t status = storeEntry(madeElement(array, rootEntry), root);
    const std::int32_t picture = count > 0 ? txFindPicture("_f_doc.svg") : 0;
    for (std::int32_t i = 1; i <= count && status == 0; ++i) {
        HistoryEntry entry = entryOf(records[static_cast<std::size_t>(i - 1)], path);
        entry.picture = picture;
        entry.parent = rootEntry;
        entry.leftSibling = i > 1 ? i - 1 : noEntry;
        entry.rightSibling = i < count ? i + 1 : noEntry;
        status = storeEntry(madeElement(array, i), entry);
    }
    return status;
}
