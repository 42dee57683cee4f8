#include "txhost/browse/CursesPicture.h"

#include "txhost/Character.h"
#include "txhost/Console.h"
#include "txhost/TextWidth.h"

#include <curses.h>

#include <algorithm>
#include <cwchar>

namespace {

struct Look {
    attr_t attributes = A_NORMAL;
    short pair = 0;  ///< of colours; that of a colour is its number and 1
};

/// A terminal of eight colours shows the bright ones as bold, and grey as faint.
Look lookOf(const TextStyle& style, int colours)
{
    Look look{(style.isBold ? A_BOLD : A_NORMAL) | (style.isReversed ? A_REVERSE : A_NORMAL), 0};
    if (style.colour == 0 || colours == 0)
        return look;
    const bool isBright = style.colour >= console::grey;
    const int colour = style.colour - (isBright ? console::grey : 30);
    if (isBright && colours >= 16)
        look.pair = static_cast<short>(colour + 9);
    else if (style.colour == console::grey)
        look.attributes |= A_DIM;
    else
        look.pair = static_cast<short>(colour + 1);
    if (isBright && colours < 16 && style.colour != console::grey)
        look.attributes |= A_BOLD;
    return look;
}

void putCell(int row, int column, wchar_t character, const Look& look)
{
    const wchar_t text[2] = {character, 0};
    cchar_t cell;
    if (setcchar(&cell, text, look.attributes, look.pair, nullptr) == OK)
        mvadd_wch(row, column, &cell);
}

/// Puts the text where it begins, returns the column behind it. Each character takes the columns that the picture was made with,
/// whatever the system thinks of them; one that the locale does not have, or that would need more, is a question mark.
int putText(int row, int column, cmROStringT text, const Look& look)
{
    while (!text.empty() && column < COLS) {
        const Character character = takeCharacter(text);
        const int columns = static_cast<int>(textWidth(character.bytes));
        const auto code = static_cast<wchar_t>(character.code);
        const int systemColumns = wcwidth(code);
        if (columns == 0) {
            if (systemColumns == 0)
                putCell(row, column, code, look);  // ncurses adds it to the cell before
        } else if (column + columns <= COLS) {
            putCell(row, column, systemColumns < 1 || systemColumns > columns ? L'?' : code, look);
        }
        column += columns;
    }
    return column;
}

}  // namespace

CursesPicture::CursesPicture(bool isColoured)
{
    if (!isColoured || !has_colors() || start_color() == ERR || use_default_colors() == ERR)
        return;
    m_colours = COLORS >= 16 ? 16 : COLORS >= 8 ? 8 : 0;
    for (int colour = 0; colour < m_colours; ++colour)
        init_pair(static_cast<short>(colour + 1), static_cast<short>(colour), -1);
}

void CursesPicture::draw(const Picture& picture) const
{
    erase();
    const int rows = std::min(static_cast<int>(picture.lines.size()), LINES);
    for (int row = 0; row < rows; ++row) {
        int column = 0;
        for (const StyledText& piece : picture.lines[static_cast<std::size_t>(row)])
            column = putText(row, column, piece.text, lookOf(piece.style, m_colours));
    }
    curs_set(picture.showsCursor ? 1 : 0);
    if (picture.showsCursor)
        move(static_cast<int>(picture.cursorRow), static_cast<int>(picture.cursorColumn));
    refresh();
}
