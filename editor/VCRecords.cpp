#include "editor/VCRecords.h"

#include <algorithm>

namespace {

bool hasSameStatus(const TXVCRECORD& a, const TXVCRECORD& b)
{
    return a.localStatus == b.localStatus && a.repositoryStatus == b.repositoryStatus;
}

}  // namespace

std::optional<TXVCRECORD> VCRecords::find(cmROStringT path) const
{
    cmMutexLock hold(m_lock);
    const auto found = m_records.find(path);
    return found == m_records.end() ? std::nullopt : std::optional(found->second.record);
}

void VCRecords::write(cmROStringT path, const TXVCRECORD& record)
{
    cmStringT key(path);
    cmMutexLock hold(m_lock);
    const auto [found, isNew] = m_records.try_emplace(std::move(key));
    Entry& entry = found->second;
    if (!entry.isInChanged && !hasSameStatus(entry.record, record)) {
        m_changed.push_back(&*found);
        entry.isInChanged = true;
    }
    entry.record = record;
    if (isNew || found->first == path)
        return;
    auto respelled = m_records.extract(found);
    respelled.key().assign(path);
    m_records.insert(std::move(respelled));
}

void VCRecords::clear(std::int32_t tool)
{
    cmMutexLock hold(m_lock);
    std::erase_if(m_changed, [&](const Entries::pointer item) { return item->second.record.tool == tool; });
    std::erase_if(m_records, [&](const auto& item) { return item.second.record.tool == tool; });
}

cmArray<std::pair<cmStringT, TXVCRECORD>> VCRecords::takeChanged()
{
    cmArray<std::pair<cmStringT, TXVCRECORD>> taken;
    cmMutexLock hold(m_lock);
    taken.reserve(m_changed.size());
    for (const Entries::pointer item : m_changed) {
        taken.emplace_back(item->first, item->second.record);
        item->second.isInChanged = false;
    }
    m_changed.clear();
    return taken;
}

cmArray<std::pair<cmStringT, TXVCRECORD>> VCRecords::all() const
{
    cmArray<std::pair<cmStringT, TXVCRECORD>> entries;
    {
        cmMutexLock hold(m_lock);
        entries.reserve(m_records.size());
        for (const auto& [path, entry] : m_records)
            entries.emplace_back(path, entry.record);
    }
    std::sort(entries.begin(), entries.end(), [](const auto& a, const auto& b) { return a.first < b.first; });
    return entries;
}

std::size_t VCRecords::SamePath::operator()(cmROStringT path) const
{
    return style == cmPathStyle::windows ? std::hash<cmStringT>()(cmLowerAscii(path)) : std::hash<cmROStringT>()(path);
}

bool VCRecords::SamePath::operator()(cmROStringT a, cmROStringT b) const
{
    return style == cmPathStyle::windows ? cmEqualIgnoringCase(a, b) : a == b;
}
