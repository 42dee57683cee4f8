#include "editor/BrowserTree.h"

#include <limits>
#include <utility>

void BrowserTree::keepRows(bool kept)
{
    clear();
    m_keepsRows = kept;
}

std::int32_t BrowserTree::rowCount() const
{
    return m_keepsRows ? static_cast<std::int32_t>(m_rows.size()) : std::numeric_limits<std::int32_t>::max();
}

void BrowserTree::clear()
{
    for (const TreeRow& row : m_rows)
        m_variables.destroy(row.userData);
    m_rows.clear();
    m_rowOfNode.clear();
}

std::int32_t BrowserTree::add(std::int32_t after, const cmStringT& caption, std::int32_t flags, TXHVAR userData)
{
    if (!m_keepsRows || (after != 0 && !isNode(after)))
        return 0;
    const std::size_t position = after == 0 ? 0 : m_rowOfNode[static_cast<std::size_t>(after) - 1] + 1;
    if (position < m_rows.size()) {
        for (std::size_t& row : m_rowOfNode)
            if (row >= position)
                ++row;
    }
    TreeRow row;
    row.caption = caption;
    row.flags = flags;
    row.userData = m_variables.copy(userData);
    m_rows.insert(m_rows.begin() + static_cast<std::ptrdiff_t>(position), std::move(row));
    m_rowOfNode.push_back(position);
    return static_cast<std::int32_t>(m_rowOfNode.size());
}

void BrowserTree::setDate(std::int32_t node, std::int32_t column, const TXDATETIME& date)
{
    if (!isNode(node))
        return;
    TreeRow& row = m_rows[m_rowOfNode[static_cast<std::size_t>(node) - 1]];
    row.dateColumn = column;
    row.date = date;
}
