#include "txhost/browse/BrowseScreen.h"

#include "txhost/Console.h"
#include "txhost/browse/FileLine.h"
#include "txhost/browse/KeyHelp.h"
#include "txhost/browse/StatusLine.h"

#include <string>
#include <utility>

namespace {

cmROStringT lastPart(cmROStringT path)
{
    return path.substr(path.find_last_of("/\\") + 1);
}

cmArray<StyledText> barWith(cmROStringT title, StyledLine line, bool hasFocus)
{
    line.draw("── ", {console::grey});
    line.add(title, {hasFocus ? 0 : console::grey, hasFocus});
    std::string rest(" ");
    for (std::size_t i = 1; i < line.room(); ++i)
        rest += "─";
    line.draw(rest, {console::grey});
    return std::move(line).finished();
}

void append(Picture& picture, cmArray<cmArray<StyledText>> lines, std::size_t height)
{
    lines.resize(height);
    for (cmArray<StyledText>& line : lines)
        picture.lines.push_back(std::move(line));
}

}  // namespace

Picture BrowseScreen::picture() const
{
    Picture picture{m_size, {}, false, 0, 0};
    if (m_helpPage && m_size.height > 0) {
        append(picture, keyHelp(m_size, m_symbols, *m_helpPage), m_size.height);
        return picture;
    }
    const Layout parts = layout();
    const bool hasFocus = !hasFocusBelow();
    append(picture,
           m_revisions.isOpen() ? m_revisions.lines(m_size.width, m_symbols, hasFocus)
                                : m_history.lines(m_size.width, m_symbols, hasFocus),
           parts.list);
    if (parts.bar > 0)
        drawBelow(picture, parts);
    if (parts.status > 0)
        drawLastLine(picture);
    return picture;
}

void BrowseScreen::drawBelow(Picture& picture, const Layout& parts) const
{
    const CommitPane& commit = below().commit;
    picture.lines.push_back(barWith(commit.title(), {m_size.width, m_symbols}, below().hasFocus));
    append(picture, commit.lines(m_size.width, m_symbols, below().hasFocus), parts.commit);
}

/// What has become of the filter that is wanted.
cmStringT BrowseScreen::filterRemark() const
{
    const HistoryState& state = m_history.state();
    if (m_wants.filter.isEmpty())
        return "";
    if (state.filter != m_wants.filter)
        return "…";
    return state.filterFoundNothing ? cmStringT("no commit has it") : countedText(m_history.commitCount(), "commit");
}

void BrowseScreen::drawLastLine(Picture& picture) const
{
    StyledLine line(m_size.width, m_symbols);
    if (m_prompt) {
        picture.showsCursor = m_size.width > 0;
        picture.cursorRow = picture.lines.size();
        picture.cursorColumn = m_prompt->draw(line, m_prompt->kind() == PromptKind::filter ? filterRemark() : m_message);
    } else {
        StatusFacts facts;
        facts.repository = lastPart(m_repository);
        facts.commitCount = m_history.commitCount();
        if (m_revisions.isOpen())
            facts.title = m_revisions.question()->path;
        facts.message = m_message;
        facts.isBadNews = m_isBadNews;
        facts.isSearching = m_finder.search() && m_finder.purpose() != RowFinder::Purpose::keep;
        facts.isReloading = m_history.state().load != m_wants.load;
        facts.filter = m_wants.filter;
        facts.filterRemark = filterRemark();
        facts.row = list().cursor();
        facts.rowCount = list().count();
        drawStatus(line, m_history.state(), facts);
    }
    picture.lines.push_back(std::move(line).finished());
}
