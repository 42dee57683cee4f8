#pragma once

#include "common/cmString.h"

#include <cstdint>

/// One character of UTF-8 text. A byte that belongs to none stands alone and is not valid; its code is the byte.
struct Character {
    cmROStringT bytes;
    std::int32_t code = 0;
    bool isValid = false;
};

/// Removes the first character from `text`, which is not empty.
Character takeCharacter(cmROStringT& text);
/// Whether `text` has only printable characters of ASCII: as most texts have, which need no closer look.
bool isPlainAscii(cmROStringT text);
/// Whether it is a control of ASCII. Such a control breaks a line or moves the cursor wherever the text is read.
bool isControl(const Character& character);
/// Whether a terminal may obey it though it is no control of ASCII: the controls of the set C1, as characters or as single bytes,
/// any other byte that is no UTF-8, and the controls of the writing direction, which make a name look like another one.
bool isTerminalControl(const Character& character);
