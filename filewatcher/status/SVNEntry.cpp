#include "filewatcher/status/SVNEntry.h"

#include "common/cmPath.h"

#include <cstdlib>

namespace {

/// Sets a status list from an attribute "item". Returns false, and changes nothing, for items other than these two: added,
/// deleted or conflicted files keep their status.
bool applyItem(const cmStringT& item, cmStringT& status)
{
    if (item == "modified")
        status = "mod";
    else if (item == "normal")
        status = "";
    else
        return false;
    return true;
}

}  // namespace

void readSvnEntry(const XMLDocument& document, std::int32_t node, SVNEntry& entry)
{
    document.readAttribute(node, "path", entry.path);
    cmUseNativeSeparators(entry.path);
    const std::int32_t working = document.child(node, "wc-status");
    entry.hasWorkingStatus = working != 0;
    if (working)
        document.readAttribute(working, "item", entry.workingItem);
    const std::int32_t repository = document.child(node, "repos-status");
    entry.hasRepositoryStatus = repository != 0;
    if (repository)
        document.readAttribute(repository, "item", entry.repositoryItem);
    entry.hasRevisions = document.readAttribute(node, "revision", entry.revision)
                         && document.readAttribute(document.child(node, "commit"), "revision", entry.commitRevision);
}

bool applyLocalStatus(const SVNEntry& entry, TXVCRECORD& record)
{
    if (entry.hasWorkingStatus)
        return applyItem(entry.workingItem, record.localStatus);
    if (record.localStatus.isEmpty())
        return false;
    record.localStatus = "";
    return true;
}

bool applyRepositoryStatus(const SVNEntry& entry, bool serverAnswered, TXVCRECORD& record)
{
    bool write = false;
    if (entry.hasRepositoryStatus) {
        write = applyItem(entry.repositoryItem, record.repositoryStatus);
    } else if (serverAnswered && !record.repositoryStatus.isEmpty()) {
        record.repositoryStatus = "";  // the client writes no "repos-status" for an entry that is up to date
        write = true;
    }
    if (entry.hasRevisions) {
        const bool newer = std::atoll(entry.commitRevision.c_str()) > std::atoll(entry.revision.c_str());
        record.repositoryStatus = newer ? "mod" : "";
        write = true;
    }
    return write;
}
