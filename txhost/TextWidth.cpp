#include "txhost/TextWidth.h"

#include "txhost/Character.h"

#include <utf8proc.h>

#include <algorithm>

namespace {

/// What a reader sees as one character: a letter with its accents, an emoji with its modifiers.
struct Grapheme {
    cmROStringT bytes;
    std::size_t columns = 0;
};

std::size_t columnsOf(const Character& character)
{
    return character.isValid ? static_cast<std::size_t>(utf8proc_charwidth(character.code)) : 1;
}

/// Removes the first grapheme from `text`, which is not empty.
Grapheme takeGrapheme(cmROStringT& text)
{
    constexpr std::int32_t asEmoji = 0xFE0F;  // asks for the coloured form of a character, which is wide
    const cmROStringT whole = text;
    Character last = takeCharacter(text);
    std::size_t columns = columnsOf(last);
    utf8proc_int32_t state = 0;
    while (!text.empty()) {
        cmROStringT rest = text;
        const Character next = takeCharacter(rest);
        if (!last.isValid || !next.isValid || utf8proc_grapheme_break_stateful(last.code, next.code, &state))
            break;
        columns = next.code == asEmoji ? std::max<std::size_t>(columns, 2) : columns + columnsOf(next);
        last = next;
        text = rest;
    }
    return {whole.substr(0, whole.size() - text.size()), columns};
}

}  // namespace

std::size_t textWidth(cmROStringT text)
{
    if (isPlainAscii(text))
        return text.size();
    std::size_t columns = 0;
    while (!text.empty())
        columns += takeGrapheme(text).columns;
    return columns;
}

cmStringT shortened(cmROStringT text, std::size_t columns, cmROStringT ellipsis)
{
    if (textWidth(text) <= columns)
        return text;
    cmStringT kept("");
    std::size_t used = 0;
    for (Grapheme next = takeGrapheme(text); (used += next.columns) < columns; next = takeGrapheme(text))
        kept += next.bytes;
    kept += columns == 0 ? cmROStringT() : ellipsis;
    return kept;
}
