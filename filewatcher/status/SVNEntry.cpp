#include "filewatcher/status/SVNEntry.h"

#include "common/cmPath.h"

#include <cstdlib>

namespace {

SVNItem readItem(const XMLDocument& document, std::int32_t node)
{
    if (node == 0)
        return SVNItem::none;
    cmStringT item;
    document.readAttribute(node, "item", item);
    return item == "normal" ? SVNItem::normal : item == "modified" ? SVNItem::modified : SVNItem::other;
}

/// Sets a status list from an item. Returns false, and changes nothing, for all but the two: added, deleted or conflicted files
/// keep their status.
bool applyItem(SVNItem item, cmStringT& status)
{
    if (item != SVNItem::modified && item != SVNItem::normal)
        return false;
    status = item == SVNItem::modified ? "mod" : "";
    return true;
}

}  // namespace

SVNEntry readSvnEntry(const XMLDocument& document, std::int32_t node)
{
    SVNEntry entry;
    document.readAttribute(node, "path", entry.path);
    cmUseNativeSeparators(entry.path);
    entry.working = readItem(document, document.child(node, "wc-status"));
    entry.repository = readItem(document, document.child(node, "repos-status"));
    cmStringT own;
    cmStringT commit;
    if (document.readAttribute(node, "revision", own)
        && document.readAttribute(document.child(node, "commit"), "revision", commit))
        entry.isOutdated = std::atoll(commit.c_str()) > std::atoll(own.c_str());
    return entry;
}

bool applyLocalStatus(const SVNEntry& entry, TXVCRECORD& record)
{
    if (entry.working != SVNItem::none)
        return applyItem(entry.working, record.localStatus);
    if (record.localStatus.isEmpty())
        return false;
    record.localStatus = "";
    return true;
}

bool applyRepositoryStatus(const SVNEntry& entry, bool serverAnswered, TXVCRECORD& record)
{
    bool write = false;
    if (entry.repository != SVNItem::none) {
        write = applyItem(entry.repository, record.repositoryStatus);
    } else if (serverAnswered && !record.repositoryStatus.isEmpty()) {
        record.repositoryStatus = "";  // the client writes no "repos-status" for an entry that is up to date
        write = true;
    }
    if (entry.isOutdated) {
        record.repositoryStatus = *entry.isOutdated ? "mod" : "";
        write = true;
    }
    return write;
}
