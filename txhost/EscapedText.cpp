#include "txhost/EscapedText.h"

#include "txhost/Character.h"

#include <array>
#include <cstdio>

namespace {

/// `text` with the bytes of each character that `isEscaped` chooses written as \xHH.
template <class Predicate>
cmStringT escapedWhere(cmROStringT text, Predicate isEscaped)
{
    if (isPlainAscii(text))
        return text;
    cmStringT shown("");
    while (!text.empty()) {
        const Character character = takeCharacter(text);
        if (!isEscaped(character)) {
            shown += character.bytes;
            continue;
        }
        for (const char c : character.bytes) {
            std::array<char, 8> escape{};
            std::snprintf(escape.data(), escape.size(), "\\x%02X", static_cast<unsigned>(static_cast<unsigned char>(c)));
            shown += escape.data();
        }
    }
    return shown;
}

}  // namespace

cmStringT escapedControls(cmROStringT text)
{
    return escapedWhere(text, &isControl);
}

cmStringT escapedForTerminal(cmROStringT text)
{
    return escapedWhere(text, [](const Character& character) { return isControl(character) || isTerminalControl(character); });
}
