#include "txhost/browse/DetailsPane.h"

#include "common/cmStringCatHelper.h"
#include "txhost/Console.h"
#include "txhost/browse/FileLine.h"

#include <utility>

void DetailsPane::show(std::shared_ptr<const CommitDetails> details)
{
    const bool isSame = m_details && details && m_details->hash == details->hash;
    m_details = std::move(details);
    m_lines.clear();
    if (m_details) {
        const bool isCommit = !m_details->hash.isEmpty();
        addLines(Part::commit, 1);
        addLines(Part::parent, m_details->parents.size());
        addLines(Part::author, isCommit);
        addLines(Part::date, isCommit && m_details->date.isSet());
        addLines(Part::failure, !m_details->failure.isNull());
        addLines(Part::blank, !m_details->message.empty());
        addLines(Part::message, m_details->message.size());
        addLines(Part::blank, 1);
        addLines(Part::summary, 1);
        addLines(Part::file, m_details->files.size());
    }
    m_window.setCount(static_cast<std::int32_t>(m_lines.size()));
    if (!isSame)
        m_window.place(0, 0);
}

void DetailsPane::addLines(Part part, std::size_t count)
{
    for (std::size_t i = 0; i < count; ++i)
        m_lines.push_back({part, i});
}

DetailsPane::Target DetailsPane::target() const
{
    if (m_lines.empty())
        return {};
    const Line& line = m_lines[static_cast<std::size_t>(m_window.cursor())];
    if (line.part == Part::commit && !m_details->hash.isEmpty())
        return {m_details->hash, nullptr};
    if (line.part == Part::parent)
        return {m_details->parents[line.number], nullptr};
    return {{}, line.part == Part::file ? &m_details->files[line.number] : nullptr};
}

void DetailsPane::goToFile(cmROStringT path)
{
    for (std::size_t i = 0; i < m_lines.size(); ++i) {
        if (m_lines[i].part == Part::file && m_details->files[m_lines[i].number].path == path)
            m_window.jumpTo(static_cast<std::int32_t>(i));
    }
}

cmArray<cmArray<StyledText>> DetailsPane::lines(std::size_t width, Symbols symbols, bool hasFocus) const
{
    cmArray<cmArray<StyledText>> lines;
    for (std::int32_t i = m_window.first(); i < m_window.end(); ++i) {
        StyledLine line(width, symbols);
        draw(line, m_lines[static_cast<std::size_t>(i)]);
        lines.push_back(std::move(line).finished(i == m_window.cursor(), hasFocus));
    }
    return lines;
}

void DetailsPane::draw(StyledLine& line, const Line& of) const
{
    constexpr TextStyle caption{console::grey};
    const CommitDetails& details = *m_details;
    switch (of.part) {
    case Part::commit:
        line.add(details.hash.isEmpty() ? "Working copy" : "commit  ", details.hash.isEmpty() ? TextStyle{0, true} : caption);
        line.add(details.hash, {console::yellow});
        break;
    case Part::parent:
        line.add("parent  ", caption);
        line.add(details.parents[of.number], {console::yellow});
        break;
    case Part::author:
        line.add("author  ", caption);
        line.add(details.author, {console::cyan});
        line.add(cmStringT(cmCat(" <") + details.email + ">"), caption);
        break;
    case Part::date:
        line.add("date    ", caption);
        line.add(details.date.text());
        break;
    case Part::failure: line.add(details.failure, {console::red}); break;
    case Part::message:
        line.add("    ");
        line.add(details.message[of.number], {0, of.number == 0});
        break;
    case Part::summary:
        line.add(changeSummary(details.files), caption);
        if (!details.isComplete)
            line.draw(" …", caption);
        break;
    case Part::file: drawFileChange(line, details.files[of.number]); break;
    case Part::blank: break;
    }
}
