#pragma once

#include "txhost/browse/Key.h"

#include <cstdint>

/// The lines of a list that are in a window, and the cursor on one of them, which is always in it.
class ListWindow {
public:
    /// Of a window without lines one line is in it all the same.
    void setHeight(std::size_t lines);
    void setCount(std::int32_t lines);

    /// Moves the cursor, if `key` is one that does.
    bool press(const Key& key);
    /// Sets the cursor to a line of the window, if it has so many.
    void click(std::size_t line);
    /// Moves the window by so many lines, and the cursor only where it would be outside.
    void scroll(std::int32_t lines);
    /// Sets the cursor to a line, or to the one that is nearest. A line that was not in the window stands in its middle then.
    void jumpTo(std::int32_t line);
    /// Sets the cursor and the window's first line, both to the nearest that there are.
    void place(std::int32_t cursor, std::int32_t first);

    std::int32_t count() const { return m_count; }
    std::int32_t cursor() const { return m_cursor; }
    std::int32_t first() const { return m_first; }
    /// The line behind the last one in the window.
    std::int32_t end() const;

private:
    void moveBy(std::int64_t lines);
    void turnPage(std::int32_t lines);
    void keepCursorInside();
    std::int32_t nearest(std::int64_t line) const;

    std::int32_t m_height = 1;
    std::int32_t m_count = 0;
    std::int32_t m_cursor = 0;
    std::int32_t m_first = 0;
};
