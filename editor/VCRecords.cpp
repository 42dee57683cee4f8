#include "editor/VCRecords.h"

#include <algorithm>

std::optional<TXVCRECORD> VCRecords::find(cmROStringT path) const
{
    cmMutexLock hold(m_lock);
    const auto found = m_records.find(path);
    return found == m_records.end() ? std::nullopt : std::optional(found->second);
}

void VCRecords::write(cmROStringT path, const TXVCRECORD& record)
{
    cmStringT key(path);
    cmMutexLock hold(m_lock);
    const auto [found, isNew] = m_records.try_emplace(std::move(key), record);
    if (isNew)
        return;
    found->second = record;
    if (found->first == path)
        return;
    auto respelled = m_records.extract(found);
    respelled.key().assign(path);
    m_records.insert(std::move(respelled));
}

void VCRecords::clear(std::int32_t tool)
{
    cmMutexLock hold(m_lock);
    std::erase_if(m_records, [&](const auto& item) {
        const std::int32_t writer = item.second.tool;
        return writer == tool || writer == 0;
    });
}

cmArray<std::pair<cmStringT, TXVCRECORD>> VCRecords::all() const
{
    cmArray<std::pair<cmStringT, TXVCRECORD>> entries;
    {
        cmMutexLock hold(m_lock);
        entries.assign(m_records.begin(), m_records.end());
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
