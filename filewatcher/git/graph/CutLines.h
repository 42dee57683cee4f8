#pragma once

#include "common/cmArray.h"

#include <cstddef>
#include <cstdint>

/// The long lines of which only the ends are drawn, by the parent that they lead to. For one thread at a time.
class CutLines {
public:
    /// Adds the line from the commit in row `child` to the parent with this id. Add each line once.
    void add(std::uint32_t parent, std::uint32_t child);
    /// Returns whether there is a cut line to the parent.
    bool any(std::uint32_t parent) const { return parent < m_lasts.size() && m_lasts[parent] != none; }
    /// Returns the rows of the children with a cut line to the parent, ascending.
    cmArray<std::uint32_t> children(std::uint32_t parent) const;

private:
    static constexpr std::uint32_t none = 0xFFFFFFFF;

    struct Line {
        std::uint32_t child;
        std::uint32_t previous;  ///< index of another line to the same parent; none for the first one
    };
    cmArray<Line> m_lines;
    cmArray<std::uint32_t> m_lasts;  ///< by parent id: index of the line that was added last
};
