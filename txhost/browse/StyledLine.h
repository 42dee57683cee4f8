#pragma once

#include "txhost/LogLine.h"
#include "txhost/browse/Picture.h"

#include <cstddef>

/// Makes a line of a picture, from the left. All text is escaped for the terminal, tabs become blanks, and what has no room is
/// cut off.
class StyledLine {
public:
    StyledLine(std::size_t width, Symbols symbols) : m_room(width), m_symbols(symbols) {}

    std::size_t room() const { return m_room; }
    /// Text from outside.
    void add(cmROStringT text, const TextStyle& style = {});
    /// The same in at most `columns` columns.
    void add(cmROStringT text, const TextStyle& style, std::size_t columns);
    /// Text that we draw with the symbols of withPlainSymbols().
    void draw(cmROStringT text, const TextStyle& style = {});
    /// One such symbol, of one column.
    void drawCell(cmROStringT symbol, int colour);
    /// Adds blanks until `room` columns are left.
    void padTo(std::size_t room);
    /// A line of its own of `width` columns, to be added later.
    StyledLine part(std::size_t width) const { return {width, m_symbols}; }
    void add(StyledLine part);
    cmROStringT ellipsis() const { return m_symbols == Symbols::plain ? "~" : "…"; }

    /// The line. The one with the cursor is reversed over its whole width, and dim when another pane has the focus.
    cmArray<StyledText> finished(bool isCursor = false, bool hasFocus = true) &&;

private:
    void append(cmROStringT text, std::size_t width, const TextStyle& style);

    std::size_t m_room;
    Symbols m_symbols;
    cmArray<StyledText> m_pieces;
};

/// `text` as a terminal may show it: escaped, with blanks for tabs. Of a very long text only about the first `columns` columns.
cmStringT shownText(cmROStringT text, std::size_t columns);
/// The part of shownText() behind its first `skipped` columns.
cmStringT textBehind(cmROStringT text, std::size_t skipped, std::size_t columns);
