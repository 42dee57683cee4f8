#include "txhost/ToolFiles.h"

#include "common/cmPath.h"

#include <algorithm>
#include <utility>

namespace {

cmArray<cmStringT> tokens(cmROStringT list)
{
    cmArray<cmStringT> found;
    while (!list.empty()) {
        const std::size_t end = std::min(list.find('|'), list.size());
        found.push_back(list.substr(0, end));
        list.remove_prefix(std::min(end + 1, list.size()));
    }
    return found;
}

}  // namespace

void ToolFiles::beginRound()
{
    m_successful.clear();
    m_hasFailed = false;
    if (!areAddedToOnly())
        return;
    for (const auto& [key, file] : m_known)
        m_unconfirmed.insert(m_unconfirmed.end(), key);
}

void ToolFiles::change(const cmStringT& path, const TXVCRECORD& record, bool updates)
{
    FileStatus file{path, m_tool.name, tokens(record.localStatus), {}};
    if (updates)
        file.repository = tokens(record.repositoryStatus);
    m_changed.insert_or_assign(cmFileNameKey(path), std::move(file));
}

void ToolFiles::endPass(const cmStringT& directory, bool hasFailed)
{
    if (hasFailed)
        m_hasFailed = true;
    else
        m_successful.insert(cmFileNameKey(directory));
}

FileStatuses ToolFiles::takeBelow(const cmStringT& directory)
{
    FileStatuses taken;
    const cmStringT key = cmFileNameKey(directory);
    take(m_changed.extract(key), taken);
    const cmStringT prefix = cmJoinPath(key, "");
    for (auto file = m_changed.lower_bound(prefix); file != m_changed.end() && file->first.view().starts_with(prefix);)
        take(m_changed.extract(file++), taken);
    return taken;
}

FileStatuses ToolFiles::takeOthers()
{
    FileStatuses taken;
    while (!m_changed.empty())
        take(m_changed.extract(m_changed.begin()), taken);
    return taken;
}

FileStatuses ToolFiles::takeGone()
{
    FileStatuses gone;
    for (const cmStringT& key : std::exchange(m_unconfirmed, {})) {
        if (!isUnknown(key))
            gone[key] = {m_known.extract(key).mapped().path, m_tool.name, {}, {}};
    }
    return gone;
}

/// Moves `file` to `taken` unless that is what is known of it.
void ToolFiles::take(FileStatuses::node_type file, FileStatuses& taken)
{
    if (!file)
        return;
    const auto known = m_known.find(file.key());
    const bool isKnown = known != m_known.end();
    m_unconfirmed.erase(file.key());
    if (isKnown ? known->second == file.mapped() : file.mapped().isClean())
        return;
    if (file.mapped().isClean())
        m_known.erase(known);
    else
        m_known.insert_or_assign(file.key(), file.mapped());
    taken.insert(std::move(file));
}

/// Whether a file without a status may have one all the same: passes have failed, and none that succeeded has looked at it.
bool ToolFiles::isUnknown(cmROStringT key) const
{
    for (cmROStringT folder = key; m_hasFailed; folder = cmDirectoryOf(folder)) {
        if (m_successful.contains(cmStringT(folder)))
            return false;
        if (folder == cmDirectoryOf(folder))
            return true;
    }
    return false;
}
