#include "txhost/browse/BrowseScreen.h"

#include "common/cmStringCatHelper.h"
#include "txhost/browse/FileLine.h"

#include <utility>

namespace {

constexpr std::size_t leastHeightForBoth = 16;  ///< of a list and the details below it

}  // namespace

BrowseScreen::BrowseScreen(cmStringT repository, Symbols symbols) : m_repository(std::move(repository)), m_symbols(symbols)
{
    arrange();
}

void BrowseScreen::resize(Picture::Size size)
{
    m_size = size;
    arrange();
}

void BrowseScreen::press(const Key& key)
{
    if (key.kind == KeyKind::character && (key.code == 'q' || key.code == 3))
        m_hasLeft = true;
    else if (m_hasDetailsFocus ? m_details.window().press(key) : m_history.press(key))
        ;
    else if (key.kind == KeyKind::enter && m_areDetailsOpen)
        m_hasDetailsFocus = true;
    else if (key.kind == KeyKind::enter)
        m_areDetailsOpen = true;
    else if (key.kind == KeyKind::tab && m_areDetailsOpen)
        m_hasDetailsFocus = !m_hasDetailsFocus;
    else if (key.kind == KeyKind::escape && m_hasDetailsFocus)
        m_hasDetailsFocus = false;
    else if (key.kind == KeyKind::escape)
        m_areDetailsOpen = false;
    arrange();
}

void BrowseScreen::take(BrowseNews news)
{
    if (news.state)
        m_history.take(std::move(*news.state));
    if (news.rows)
        m_history.take(std::move(*news.rows));
    if (!news.workingCopy.isNull())
        m_history.takeWorkingCopy(std::move(news.workingCopy));
    if (news.details && m_wants.details && news.details->hash == *m_wants.details)
        m_details.show(std::move(news.details));
    arrange();
}

bool BrowseScreen::hasDetails() const
{
    const CommitDetails* shown = m_details.details().get();
    return shown && m_wants.details && shown->hash == *m_wants.details;
}

bool BrowseScreen::isComplete() const
{
    return m_history.isComplete() && (!m_wants.details || (hasDetails() && m_details.details()->isComplete));
}

BrowseScreen::Layout BrowseScreen::layout() const
{
    const std::size_t body = m_size.height - std::min<std::size_t>(m_size.height, 1);
    if (!m_areDetailsOpen || body == 0)
        return {body, 0, 0};
    if (m_size.height < leastHeightForBoth)
        return m_hasDetailsFocus ? Layout{0, 1, body - 1} : Layout{body, 0, 0};
    return {body / 2, 1, body - body / 2 - 1};
}

void BrowseScreen::arrange()
{
    const Layout parts = layout();
    m_history.setHeight(parts.list);
    m_details.window().setHeight(parts.details);
    const ListWindow& window = m_history.window();
    RowCache::want(m_wants, window.first(), window.end());
    m_wants.details = m_areDetailsOpen ? m_history.selectedHash() : std::nullopt;
}

Picture BrowseScreen::picture() const
{
    Picture picture{m_size, {}, false, 0, 0};
    const Layout parts = layout();
    if (parts.list > 0)
        picture.lines = m_history.lines(m_size.width, m_symbols, !m_hasDetailsFocus);
    picture.lines.resize(parts.list);
    if (parts.bar > 0)
        picture.lines.emplace_back();
    if (parts.details > 0 && hasDetails()) {
        for (cmArray<StyledText>& line : m_details.lines(m_size.width, m_symbols, m_hasDetailsFocus))
            picture.lines.push_back(std::move(line));
    }
    if (m_size.height > 0) {
        picture.lines.resize(m_size.height - 1);
        StyledLine status(m_size.width, m_symbols);
        status.add(cmStringT(cmCat(groupedDigits(m_history.state().rowCount)) + " commits"));
        picture.lines.push_back(std::move(status).finished());
    }
    return picture;
}

cmStringT BrowseScreen::takeCopied()
{
    return std::exchange(m_copied, {});
}
