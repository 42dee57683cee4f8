#include "editor/VCRecords.h"

#include <algorithm>

std::optional<TXVCRECORD> VCRecords::find(cmROStringT path) const
{
    const cmStringT key = keyOf(path);
    cmMutexLock hold(m_lock);
    const auto found = m_records.find(key);
    return found == m_records.end() ? std::nullopt : std::optional(found->second.second);
}

void VCRecords::write(cmROStringT path, const TXVCRECORD& record)
{
    const cmStringT key = keyOf(path);
    cmMutexLock hold(m_lock);
    m_records.insert_or_assign(key, Entry(path, record));
}

void VCRecords::clear(std::int32_t tool)
{
    cmMutexLock hold(m_lock);
    std::erase_if(m_records, [&](const auto& item) {
        const std::int32_t writer = item.second.second.tool;
        return writer == tool || writer == 0;
    });
}

cmArray<std::pair<cmStringT, TXVCRECORD>> VCRecords::all() const
{
    cmArray<Entry> entries;
    {
        cmMutexLock hold(m_lock);
        entries.reserve(m_records.size());
        for (const auto& [key, entry] : m_records)
            entries.push_back(entry);
    }
    std::sort(entries.begin(), entries.end(), [](const Entry& a, const Entry& b) { return a.first < b.first; });
    return entries;
}

cmStringT VCRecords::keyOf(cmROStringT path) const
{
    return m_style == cmPathStyle::windows ? cmLowerAscii(path) : cmStringT(path);
}
