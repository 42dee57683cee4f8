#include "txhost/browse/StyledLine.h"

#include "txhost/Character.h"
#include "txhost/Console.h"
#include "txhost/EscapedText.h"
#include "txhost/PlainSymbols.h"
#include "txhost/TextWidth.h"

#include <algorithm>
#include <string>
#include <utility>

namespace {

constexpr std::size_t tabWidth = 8;
constexpr std::size_t bytesPerColumn = 16;  ///< more have only letters under heaps of accents

/// `text` without what would join the character in front of it and make that one wider.
cmROStringT withoutJoining(cmROStringT text)
{
    constexpr cmROStringT asEmoji = "\uFE0F";
    while (text.starts_with(asEmoji))
        text.remove_prefix(asEmoji.size());
    return text;
}

}  // namespace

cmStringT shownText(cmROStringT text, std::size_t columns)
{
    if (text.size() / bytesPerColumn > columns)
        text = text.substr(0, bytesPerColumn * (columns + 1));
    cmStringT shown("");
    std::size_t width = 0;
    while (text.find('\t') != cmROStringT::npos) {
        const cmStringT piece = escapedForTerminal(cmTakeUntil(text, '\t'));
        width += textWidth(piece);
        const std::string blanks(tabWidth - width % tabWidth, ' ');
        width += blanks.size();
        shown += piece;
        shown += blanks;
    }
    shown += escapedForTerminal(text);
    return withoutJoining(shown);
}

cmStringT textBehind(cmROStringT text, std::size_t skipped, std::size_t columns)
{
    const cmStringT whole = shownText(text, skipped + columns);
    cmROStringT rest = whole;
    for (std::size_t passed = 0; passed < skipped && !rest.empty();)
        passed += textWidth(takeCharacter(rest).bytes);
    return rest;
}

void StyledLine::add(cmROStringT text, const TextStyle& style)
{
    add(text, style, m_room);
}

void StyledLine::add(cmROStringT text, const TextStyle& style, std::size_t columns)
{
    const cmStringT cut = shortened(shownText(text, columns), std::min(columns, m_room), ellipsis());
    append(cut, textWidth(cut), style);
}

void StyledLine::draw(cmROStringT text, const TextStyle& style)
{
    add(m_symbols == Symbols::plain ? withPlainSymbols(text) : cmStringT(text), style);
}

void StyledLine::drawCell(cmROStringT symbol, int colour)
{
    const bool isBlank = symbol == " ";
    const TextStyle style = isBlank && !m_pieces.empty() ? m_pieces.back().style : TextStyle{colour};
    if (m_room > 0)
        append(isBlank || m_symbols == Symbols::unicode ? symbol : withPlainSymbols(symbol).view(), 1, style);
}

void StyledLine::padTo(std::size_t room)
{
    if (room < m_room)
        append(std::string(m_room - room, ' '), m_room - room, {});
}

void StyledLine::add(StyledLine part)
{
    for (StyledText& piece : part.m_pieces)
        add(piece.text, piece.style);
}

cmArray<StyledText> StyledLine::finished(bool isCursor, bool hasFocus) &&
{
    if (!isCursor)
        return std::move(m_pieces);
    padTo(0);
    for (StyledText& piece : m_pieces) {
        piece.style.colour = hasFocus ? 0 : console::grey;
        piece.style.isReversed = true;
    }
    return std::move(m_pieces);
}

void StyledLine::append(cmROStringT text, std::size_t width, const TextStyle& style)
{
    if (text.empty())
        return;
    m_room -= std::min(m_room, width);
    if (!m_pieces.empty() && m_pieces.back().style == style)
        m_pieces.back().text += text;
    else
        m_pieces.push_back({text, style});
}
