#pragma once

#include "common/cmArray.h"
#include "common/cmDictionary.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>

/// The long lines of which only the ends are drawn, by the parent that they lead to. For one thread at a time.
class CutLines {
public:
    using Rows = cmArray<std::uint32_t>;

    /// Adds the line from the commit in row `child` to the parent with this id. A line that was added before changes nothing.
    void add(std::uint32_t parent, std::uint32_t child)
    {
        if (m_isParent.size() <= parent)
            m_isParent.resize(std::size_t{2} * parent + 1);
        m_isParent[parent] = true;
        Rows& rows = m_children[parent];
        const auto place = std::lower_bound(rows.begin(), rows.end(), child);
        if (place == rows.end() || *place != child)
            rows.insert(place, child);
    }

    /// Returns whether there is a cut line to the parent. Asked for every commit, so it is cheaper than `children`.
    bool any(std::uint32_t parent) const { return parent < m_isParent.size() && m_isParent[parent]; }
    /// Returns the rows of the children with a cut line to this parent, ascending. There must be one.
    const Rows& children(std::uint32_t parent) const { return m_children.find(parent)->second; }

private:
    cmArray<bool> m_isParent;  ///< by id
    cmDictionary<std::uint32_t, Rows> m_children;
};
