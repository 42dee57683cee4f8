#include "txhost/LogLine.h"

#include "common/cmStringCatHelper.h"
#include "filewatcher/git/commits/ShortHash.h"
#include "txhost/Console.h"
#include "txhost/PlainSymbols.h"
#include "txhost/TextWidth.h"

#include <algorithm>
#include <limits>
#include <string>

namespace {

constexpr std::size_t leastSubject = 20;  ///< columns that nothing else takes from a subject

}  // namespace

cmStringT LogLines::drawn(cmROStringT text) const
{
    return m_symbols == Symbols::plain ? withPlainSymbols(text) : cmStringT(text);
}

cmStringT LogLines::next(const GraphRow& row, const LogEntry& entry)
{
    const GraphView view = m_window.next(row);
    cmStringT names = drawn(m_names.next(row));
    cmStringT line = drawn(graphText(row, view, m_paint));
    const cmStringT ellipsis = drawn("…");
    std::size_t room = m_width == 0 ? std::numeric_limits<std::size_t>::max() / 2 : m_width - std::min(m_width, view.width);
    if (room < shortHashLength)
        return line;
    line +=
        entry.hash.isEmpty() ? cmStringT(cmROStringT(std::string(shortHashLength, ' '))) : m_paint(console::yellow, entry.hash);
    room -= shortHashLength;
    if (room < 2)
        return line;
    line += ' ';
    --room;

    const std::size_t subjectWidth = textWidth(entry.subject);
    for (const LogLabel& label : fittingLabels(entry.labels, subjectWidth, room, ellipsis))
        line += cmStringT(cmCat(m_paint(label.colour, bracketed(label))) + " ");

    // What is shown beside the subject, the more important first.
    cmStringT about = entry.about;
    for (cmStringT* text : {&names, &about}) {
        if (text->isEmpty())
            continue;
        *text = cmCat("  ") + *text;
        const std::size_t width = textWidth(*text);
        if (std::min(subjectWidth, leastSubject) + width <= room)
            room -= width;
        else
            text->clear();
    }
    line += shortened(entry.subject, room, ellipsis);
    line += m_paint(console::grey, about);
    line += m_paint(console::grey, names);
    return line;
}
