#include "txhost/Character.h"

#include <utf8proc.h>

#include <algorithm>
#include <iterator>

Character takeCharacter(cmROStringT& text)
{
    utf8proc_int32_t code = 0;
    const utf8proc_ssize_t length = utf8proc_iterate(reinterpret_cast<const utf8proc_uint8_t*>(text.data()),
                                                     static_cast<utf8proc_ssize_t>(text.size()), &code);
    const bool isValid = length > 0;
    Character character{text.substr(0, isValid ? static_cast<std::size_t>(length) : 1), code, isValid};
    if (!isValid)
        character.code = static_cast<unsigned char>(text.front());
    text.remove_prefix(character.bytes.size());
    return character;
}

bool isPlainAscii(cmROStringT text)
{
    return std::all_of(text.begin(), text.end(), [](char c) { return c >= 0x20 && c < 0x7F; });
}

bool isControl(const Character& character)
{
    return character.code < 0x20 || character.code == 0x7F;
}

bool isTerminalControl(const Character& character)
{
    constexpr std::int32_t ranges[][2] = {{0x80, 0x9F}, {0x61C, 0x61C}, {0x200E, 0x200F}, {0x202A, 0x202E}, {0x2066, 0x2069}};
    return !character.isValid || std::any_of(std::begin(ranges), std::end(ranges), [&character](const auto& range) {
        return character.code >= range[0] && character.code <= range[1];
    });
}
