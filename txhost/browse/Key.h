#pragma once

#include "common/cmArray.h"
#include "common/cmString.h"

#include <cstddef>
#include <optional>

enum class KeyKind {
    character,  ///< also with Ctrl: code 1 is Ctrl-A
    enter,
    escape,
    tab,
    backTab,
    backspace,
    up,
    down,
    left,
    right,
    pageUp,
    pageDown,
    home,
    end,
    click,  ///< of the left mouse button
    doubleClick,
    wheelUp,
    wheelDown,
};

/// What the user has done: a key, or the mouse.
struct Key {
    KeyKind kind = KeyKind::character;
    char32_t code = 0;       ///< of a character
    std::size_t row = 0;     ///< of the mouse, from the top, from 0
    std::size_t column = 0;  ///< likewise, from the left
    friend bool operator==(const Key&, const Key&) = default;
};

/// The key with which a terminal sends the character `code`: Enter, Escape, Tab and Backspace are controls there.
Key keyOfCharacter(char32_t code);

/// The keys that `text` names, in the order in which they are pressed: each character is that key, but for names in angle
/// brackets: <Enter> <Esc> <Tab> <BackTab> <Backspace> <Up> <Down> <Left> <Right> <PageUp> <PageDown> <Home> <End> <Space> <lt>,
/// <C-x> for Ctrl and a letter, <Click:ROW,COLUMN> <DoubleClick:ROW,COLUMN> <WheelUp:ROW,COLUMN> <WheelDown:ROW,COLUMN>. Nothing
/// when it has another name or is no UTF-8.
std::optional<cmArray<Key>> keysFromText(cmROStringT text);
