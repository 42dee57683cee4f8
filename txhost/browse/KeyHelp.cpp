#include "txhost/browse/KeyHelp.h"

#include "txhost/Console.h"

#include <algorithm>
#include <iterator>
#include <utility>

namespace {

constexpr std::size_t keysWidth = 18;
constexpr std::size_t columnWidth = 70;

struct Entry {
    cmROStringT keys;  ///< none: a heading
    cmROStringT meaning;
};

// With the last line they fit a terminal of 24.
constexpr Entry entries[] = {
    {"", "Move"},
    {"j k  arrows", "down, up"},
    {"Space b  PageDown", "a page down, up (Ctrl-F, Ctrl-B); Ctrl-D, Ctrl-U: half a page"},
    {"g G  Home End", "first row; last row, also of a load that goes on"},
    {"Enter l  Right", "open: details, a parent, a file's diff; in a diff more of long lines"},
    {"Esc h  Left", "back; Esc also ends a filter"},
    {"Tab", "to the other pane"},
    {"[ ]", "previous, next file of a diff"},
    {"H L", "history of a file: up to this commit, up to HEAD"},
    {"mouse", "click: select; double click: open; wheel: scroll"},
    {"", "Find"},
    {"/", "search as you type"},
    {"n N", "next, previous match"},
    {"f &", "filter as you type: Enter keeps it, Esc ends it"},
    {":", "go to a branch, a tag or a hash; Tab completes"},
    {"@", "go to HEAD"},
    {"p c", "go to the parent, to the child"},
    {"o > <", "follow a cut line to its other end: > down, < up"},
    {"", "Other"},
    {"y", "copy the hash, or the path of a file"},
    {"R  Ctrl-L", "load anew; draw anew"},
    {"q  Ctrl-Z", "leave (also Ctrl-C); suspend"},
};

struct Shape {
    std::size_t columns;
    std::size_t lines;  ///< of each column
    std::size_t pages;
};

Shape shapeFor(const Picture::Size& size)
{
    const std::size_t columns = size.width >= 2 * columnWidth ? 2 : 1;
    const std::size_t lines = std::max<std::size_t>(size.height, 2) - 1;
    return {columns, lines, (std::size(entries) + columns * lines - 1) / (columns * lines)};
}

void draw(StyledLine& line, const Entry& entry)
{
    const std::size_t room = line.room();
    if (entry.keys.empty()) {
        line.add(entry.meaning, {console::cyan, true});
        return;
    }
    line.add("  ");
    line.add(entry.keys, {0, true});
    line.padTo(room - std::min(room, keysWidth + 2));
    line.add(" ");
    line.add(entry.meaning);
}

}  // namespace

std::size_t keyHelpPages(const Picture::Size& size)
{
    return shapeFor(size).pages;
}

cmArray<cmArray<StyledText>> keyHelp(const Picture::Size& size, Symbols symbols, std::size_t page)
{
    const Shape shape = shapeFor(size);
    cmArray<cmArray<StyledText>> lines;
    for (std::size_t row = 0; row < shape.lines; ++row) {
        StyledLine line(size.width, symbols);
        for (std::size_t column = 0; column < shape.columns; ++column) {
            const std::size_t number = (page * shape.columns + column) * shape.lines + row;
            if (number < std::size(entries))
                draw(line, entries[number]);
            line.padTo(size.width - std::min(size.width, (column + 1) * columnWidth));
        }
        lines.push_back(std::move(line).finished());
    }
    lines.resize(shape.lines);
    StyledLine last(size.width, symbols);
    last.add(page + 1 < shape.pages ? "any key: more" : "any key: back", {console::grey});
    lines.push_back(std::move(last).finished());
    return lines;
}
