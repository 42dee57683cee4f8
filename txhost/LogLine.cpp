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
constexpr std::size_t leastName = 2;      ///< of a label that is shortened: a letter and the ellipsis

/// With its brackets and the blank behind it.
std::size_t labelWidth(const LogLabel& label)
{
    return textWidth(label.name) + 3;
}

/// The labels as they are shown in at most `columns` columns, with this ellipsis. Reduces `columns` by what they take.
cmArray<LogLabel> fittingLabels(const cmArray<LogLabel>& labels, std::size_t& columns, cmROStringT ellipsis)
{
    const LogLabel more{ellipsis, "[]", console::grey};
    cmArray<LogLabel> shown;
    const auto show = [&](const LogLabel& label) {
        shown.push_back(label);
        columns -= labelWidth(label);
    };
    for (std::size_t i = 0; i < labels.size(); ++i) {
        const std::size_t kept = i + 1 < labels.size() ? labelWidth(more) : 0;
        LogLabel label = labels[i];
        if (labelWidth(label) + kept <= columns) {
            show(label);
            continue;
        }
        const std::size_t around = labelWidth({}) + kept;
        const bool isShortened = columns >= around + leastName;
        if (isShortened) {
            label.name = shortened(label.name, columns - around, ellipsis);
            show(label);
        }
        if ((kept > 0 || !isShortened) && labelWidth(more) <= columns)
            show(more);
        break;
    }
    return shown;
}

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
    std::size_t forLabels = std::max(room / 2, room - std::min(room, subjectWidth));
    room -= forLabels;
    for (const LogLabel& label : fittingLabels(entry.labels, forLabels, ellipsis)) {
        const cmStringT bracketed = cmCat(label.brackets.substr(0, 1)) + label.name + label.brackets.substr(1);
        line += cmStringT(cmCat(m_paint(label.colour, bracketed)) + " ");
    }
    room += forLabels;

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
