#include "txhost/Character.h"

#include <algorithm>
#include <initializer_list>
#include <utility>

namespace {

bool isIn(std::uint32_t code, std::initializer_list<std::pair<std::uint32_t, std::uint32_t>> ranges)
{
    return std::any_of(ranges.begin(), ranges.end(),
                       [code](const auto& range) { return code >= range.first && code <= range.second; });
}

}  // namespace

Character takeCharacter(cmROStringT& text)
{
    const auto byteAt = [&text](std::size_t i) { return static_cast<unsigned char>(text[i]); };
    const unsigned char first = byteAt(0);
    const std::size_t length = first < 0x80 ? 1 : first < 0xC0 ? 0 : first < 0xE0 ? 2 : first < 0xF0 ? 3 : first < 0xF8 ? 4 : 0;
    Character character{text.substr(0, 1), first, length == 1};
    if (length > 1 && length <= text.size()) {
        std::uint32_t code = first & (0x7Fu >> length);
        bool continued = true;
        for (std::size_t i = 1; i < length; ++i) {
            continued = continued && (byteAt(i) & 0xC0) == 0x80;
            code = code << 6 | (byteAt(i) & 0x3Fu);
        }
        constexpr std::uint32_t least[] = {0x80, 0x800, 0x10000};  // a longer form than needed is not valid
        const bool isSurrogate = code >= 0xD800 && code <= 0xDFFF;
        if (continued && code >= least[length - 2] && code <= 0x10FFFF && !isSurrogate)
            character = {text.substr(0, length), code, true};
    }
    text.remove_prefix(character.bytes.size());
    return character;
}

std::size_t columnsOf(const Character& character)
{
    const std::uint32_t code = character.code;
    if (isIn(code, {{0x300, 0x36F}, {0x200B, 0x200F}, {0xFE0F, 0xFE0F}}))
        return 0;  // combines with the character before it
    return isIn(code, {{0x1100, 0x115F},
                       {0x2E80, 0xA4CF},
                       {0xAC00, 0xD7A3},
                       {0xF900, 0xFAFF},
                       {0xFE30, 0xFE6F},
                       {0xFF00, 0xFF60},
                       {0x1F300, 0x1FAFF},
                       {0x20000, 0x3FFFD}})
               ? 2
               : 1;
}

bool isControl(const Character& character)
{
    return character.code < 0x20 || character.code == 0x7F;
}

bool isTerminalControl(const Character& character)
{
    return !character.isValid
           || isIn(character.code, {{0x80, 0x9F}, {0x61C, 0x61C}, {0x200E, 0x200F}, {0x202A, 0x202E}, {0x2066, 0x2069}});
}
