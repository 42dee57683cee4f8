#include "txhost/browse/ListWindow.h"

#include <algorithm>
#include <limits>

void ListWindow::setHeight(std::size_t lines)
{
    constexpr std::size_t most = 1 << 20;
    m_height = static_cast<std::int32_t>(std::clamp<std::size_t>(lines, 1, most));
    place(m_cursor, m_first);
}

void ListWindow::setCount(std::int32_t lines)
{
    m_count = std::max(0, lines);
    place(m_cursor, m_first);
}

bool ListWindow::press(const Key& key)
{
    const auto ctrl = [](char letter) { return static_cast<char32_t>(letter - 'A' + 1); };
    const char32_t code = key.kind == KeyKind::character ? key.code : 0;
    if (code == 'j' || code == ctrl('N') || key.kind == KeyKind::down)
        moveBy(1);
    else if (code == 'k' || code == ctrl('P') || key.kind == KeyKind::up)
        moveBy(-1);
    else if (code == ' ' || code == ctrl('F') || key.kind == KeyKind::pageDown)
        turnPage(m_height);
    else if (code == 'b' || code == ctrl('B') || key.kind == KeyKind::pageUp)
        turnPage(-m_height);
    else if (code == ctrl('D'))
        turnPage((m_height + 1) / 2);
    else if (code == ctrl('U'))
        turnPage(-(m_height + 1) / 2);
    else if (code == 'g' || key.kind == KeyKind::home)
        moveBy(std::numeric_limits<std::int32_t>::min());
    else if (code == 'G' || key.kind == KeyKind::end)
        moveBy(std::numeric_limits<std::int32_t>::max());
    else
        return false;
    return true;
}

void ListWindow::click(std::size_t line)
{
    if (line < static_cast<std::size_t>(end() - m_first))
        m_cursor = m_first + static_cast<std::int32_t>(line);
}

void ListWindow::scroll(std::int32_t lines)
{
    m_first = std::clamp(m_first + lines, 0, std::max(0, m_count - m_height));
    m_cursor = nearest(std::clamp(m_cursor, m_first, m_first + m_height - 1));
}

void ListWindow::jumpTo(std::int32_t line)
{
    m_cursor = nearest(line);
    const bool isInside = m_cursor >= m_first && m_cursor < end();
    place(m_cursor, isInside ? m_first : m_cursor - m_height / 2);
}

void ListWindow::place(std::int32_t cursor, std::int32_t first)
{
    m_cursor = nearest(cursor);
    m_first = std::clamp(first, 0, std::max(0, m_count - m_height));
    keepCursorInside();
}

std::int32_t ListWindow::end() const
{
    return std::min(m_count, m_first + m_height);
}

void ListWindow::moveBy(std::int64_t lines)
{
    m_cursor = nearest(m_cursor + lines);
    keepCursorInside();
}

void ListWindow::turnPage(std::int32_t lines)
{
    place(nearest(std::int64_t{m_cursor} + lines), nearest(std::int64_t{m_first} + lines));
}

void ListWindow::keepCursorInside()
{
    m_first = std::clamp(m_first, std::max(0, m_cursor - m_height + 1), m_cursor);
}

std::int32_t ListWindow::nearest(std::int64_t line) const
{
    return static_cast<std::int32_t>(std::clamp<std::int64_t>(line, 0, std::max(0, m_count - 1)));
}
