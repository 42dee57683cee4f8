#include "txhost/browse/CursesKeys.h"

#include <curses.h>

namespace {

constexpr auto doubleClickTime = std::chrono::milliseconds(400);

std::optional<KeyKind> kindOf(wint_t code)
{
    switch (code) {
    case KEY_ENTER: return KeyKind::enter;
    case KEY_BTAB: return KeyKind::backTab;
    case KEY_BACKSPACE: return KeyKind::backspace;
    case KEY_UP: return KeyKind::up;
    case KEY_DOWN: return KeyKind::down;
    case KEY_LEFT: return KeyKind::left;
    case KEY_RIGHT: return KeyKind::right;
    case KEY_PPAGE: return KeyKind::pageUp;
    case KEY_NPAGE: return KeyKind::pageDown;
    case KEY_HOME: return KeyKind::home;
    case KEY_END: return KeyKind::end;
    default: return std::nullopt;
    }
}

/// A press of the mouse, the wheel's too, as a single click.
std::optional<KeyKind> kindOf(const MEVENT& event)
{
    if (event.bstate & BUTTON4_PRESSED)
        return KeyKind::wheelUp;
    if (event.bstate & BUTTON5_PRESSED)
        return KeyKind::wheelDown;
    return event.bstate & BUTTON1_PRESSED ? std::optional(KeyKind::click) : std::nullopt;
}

}  // namespace

std::optional<Key> CursesKeys::functionKey(wint_t code)
{
    if (code == KEY_MOUSE)
        return mouseKey();
    const std::optional<KeyKind> kind = kindOf(code);
    return kind ? std::optional(Key{*kind}) : std::nullopt;
}

std::optional<Key> CursesKeys::mouseKey()
{
    MEVENT event;
    if (getmouse(&event) != OK || event.x < 0 || event.y < 0)
        return std::nullopt;
    const std::optional<KeyKind> kind = kindOf(event);
    if (!kind)
        return std::nullopt;
    Key key{*kind, 0, static_cast<std::size_t>(event.y), static_cast<std::size_t>(event.x)};
    if (key.kind != KeyKind::click)
        return key;
    const auto now = std::chrono::steady_clock::now();
    const bool isSecond = key == m_lastClick && now - m_clickTime < doubleClickTime;
    m_clickTime = now;
    m_lastClick = isSecond ? Key() : key;
    if (isSecond)
        key.kind = KeyKind::doubleClick;
    return key;
}
