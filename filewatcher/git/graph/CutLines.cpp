#include "filewatcher/git/graph/CutLines.h"

#include <algorithm>
#include <utility>

void CutLines::add(std::uint32_t parent, std::uint32_t child)
{
    if (m_lasts.size() <= parent)
        m_lasts.resize(std::size_t{2} * parent + 1, none);
    const auto index = static_cast<std::uint32_t>(m_lines.size());
    m_lines.push_back({child, std::exchange(m_lasts[parent], index)});
}

cmArray<std::uint32_t> CutLines::children(std::uint32_t parent) const
{
    cmArray<std::uint32_t> rows;
    if (!any(parent))
        return rows;
    for (std::uint32_t index = m_lasts[parent]; index != none; index = m_lines[index].previous)
        rows.push_back(m_lines[index].child);
    std::sort(rows.begin(), rows.end());
    return rows;
}
