#include "txhost/browse/RevisionsPane.h"

#include "filewatcher/git/commits/ShortHash.h"
#include "txhost/Console.h"
#include "txhost/browse/AboutColumns.h"

#include <utility>

void RevisionsPane::open(FileQuestion question)
{
    m_question = std::move(question);
    m_history.reset();
    m_window.setCount(0);
}

void RevisionsPane::close()
{
    m_question.reset();
    m_history.reset();
    m_window.setCount(0);
}

void RevisionsPane::take(std::shared_ptr<const FileHistory> history)
{
    if (!m_question || history->question != *m_question)
        return;
    m_history = std::move(history);
    m_window.setCount(static_cast<std::int32_t>(m_history->revisions.size()));
}

const FileRevision* RevisionsPane::selected() const
{
    return m_window.count() > 0 ? &m_history->revisions[static_cast<std::size_t>(m_window.cursor())] : nullptr;
}

cmArray<cmArray<StyledText>> RevisionsPane::lines(std::size_t width, Symbols symbols, bool hasFocus) const
{
    cmArray<cmArray<StyledText>> lines;
    const AboutColumns about(width);
    for (std::int32_t i = m_window.first(); i < m_window.end(); ++i) {
        const FileRevision& revision = m_history->revisions[static_cast<std::size_t>(i)];
        StyledLine line(width, symbols);
        line.add(shortHash(revision.hash), {console::yellow});
        line.add(" ");
        line.add(revision.subject, {}, line.room() - std::min(line.room(), about.width()));
        about.draw(line, revision.author, revision.date, {console::grey});
        lines.push_back(std::move(line).finished(i == m_window.cursor(), hasFocus));
    }
    if (lines.empty()) {
        StyledLine line(width, symbols);
        if (m_history && !m_history->failure.isNull())
            line.add(m_history->failure, {console::red});
        else
            line.draw(m_history ? "no revision" : "…", {console::grey});
        lines.push_back(std::move(line).finished());
    }
    return lines;
}
