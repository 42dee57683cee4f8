#include "txhost/browse/BrowseScreen.h"

#include "common/cmStringCatHelper.h"

#include <algorithm>
#include <utility>

namespace {

constexpr std::size_t leastHeightForBoth = 16;  ///< of a list and what is below it

bool hasFiles(const CommitDetails* details)
{
    return details && !details->files.empty();
}

}  // namespace

BrowseScreen::BrowseScreen(cmStringT repository, Symbols symbols) : m_repository(std::move(repository)), m_symbols(symbols)
{
    arrange();
}

void BrowseScreen::resize(Picture::Size size)
{
    if (size == m_size)
        return;
    m_size = size;
    if (m_helpPage)
        m_helpPage = 0;
    arrange();
}

void BrowseScreen::take(BrowseNews news)
{
    if (news.state && m_history.take(std::move(*news.state))) {
        if (m_history.lost() && (!m_finder.search() || m_finder.purpose() == RowFinder::Purpose::keep))
            m_finder.start(RowFinder::Purpose::keep, SearchKind::hash, *m_history.lost());
        else
            m_finder.restart();
    }
    if (news.rows)
        m_history.take(std::move(*news.rows));
    if (!news.workingCopy.isNull())
        m_history.takeWorkingCopy(std::move(news.workingCopy));
    if (news.found)
        takeFound(*news.found);
    if (news.history)
        m_revisions.take(std::move(news.history));
    if (news.details && m_wants.details && news.details->hash == *m_wants.details) {
        const bool hadFiles = hasFiles(below().commit.details());
        below().commit.show(std::move(news.details));
        if (!hadFiles && m_revisions.isOpen())
            below().commit.goToFile(m_revisions.question()->path);
    }
    arrange();
}

void BrowseScreen::takeFound(const RowFound& found)
{
    const cmStringT text = m_finder.search() ? m_finder.search()->text : cmStringT("");
    if (found.edition != m_history.state().edition || !m_finder.take(found))
        return;
    if (m_finder.purpose() == RowFinder::Purpose::keep)
        m_history.found(found.row);
    else if (found.row >= 0)
        m_history.jumpTo(found.row);
    else if (m_finder.purpose() == RowFinder::Purpose::go && !m_history.state().filter.isEmpty())
        say("the filter leaves it out: Esc ends it");
    else
        say(cmCat("not found: ") + text);
}

std::optional<cmStringT> BrowseScreen::selectedHash() const
{
    if (!m_revisions.isOpen())
        return m_history.selectedHash();
    const FileRevision* revision = m_revisions.selected();
    return revision ? std::optional(revision->hash) : std::nullopt;
}

/// What the selected row tells of its commit; null when the row is not known.
std::shared_ptr<const CommitDetails> BrowseScreen::knownOfSelected() const
{
    auto known = std::make_shared<CommitDetails>();
    if (const FileRevision* revision = m_revisions.selected())
        *known = {revision->hash, {}, revision->author, {}, revision->date, {revision->subject}, {}, false, {}};
    else if (const HistoryRow* row = m_revisions.isOpen() ? nullptr : m_history.selected())
        *known = {row->hash, row->parents, row->author, row->email, row->date, {row->subject}, {}, false, {}};
    else
        return nullptr;
    if (known->hash.isEmpty())
        known->message.clear();
    return known;
}

bool BrowseScreen::hasWantedRows() const
{
    const HistoryState& state = m_history.state();
    const bool isAnswered = state.load == m_wants.load && state.filter == m_wants.filter && !state.isFiltering;
    return isAnswered && !m_finder.search() && m_history.isComplete();
}

bool BrowseScreen::isComplete() const
{
    const bool awaitsNames = m_prompt && m_prompt->kind() == PromptKind::jump && !m_history.state().names;
    const CommitDetails* details = below().commit.details();
    return hasWantedRows() && !(awaitsNames && m_history.state().isLoading) && (!m_revisions.isOpen() || m_revisions.isComplete())
           && (!m_wants.details || (details && details->isComplete));
}

bool BrowseScreen::hasRoomForBoth() const
{
    return m_size.height >= leastHeightForBoth;
}

BrowseScreen::Layout BrowseScreen::layout() const
{
    const std::size_t status = std::min<std::size_t>(m_size.height, 1);
    const std::size_t body = m_size.height - status;
    if (!below().isOpen || body == 0 || (!hasRoomForBoth() && !below().hasFocus))
        return {body, 0, 0, status};
    const std::size_t list = hasRoomForBoth() ? body / 2 : 0;
    return {list, 1, body - list - 1, status};
}

/// Each time that another commit is selected, or the other list shown, the details there were are not those that are shown.
void BrowseScreen::wantDetails()
{
    const std::optional<cmStringT> wanted = below().isOpen ? selectedHash() : std::nullopt;
    if (wanted != m_wants.details || m_wants.history.has_value() != m_revisions.isOpen())
        ++m_wants.detailsNumber;
    m_wants.details = wanted;
}

/// Makes everything else follow from what has changed.
void BrowseScreen::arrange()
{
    const Layout parts = layout();
    const std::size_t body = m_size.height - parts.status;
    m_history.setHeight(parts.list > 0 ? parts.list : body);
    m_revisions.window().setHeight(parts.list > 0 ? parts.list : body);
    RowCache::want(m_wants, m_history.window().first(), m_history.window().end());
    wantDetails();
    m_wants.history = m_revisions.question();
    m_wants.search = m_finder.search();

    const CommitDetails* shown = below().commit.details();
    if (below().isOpen && (!shown || !m_wants.details || shown->hash != *m_wants.details))
        below().commit.show(knownOfSelected());
    below().commit.setHeight(parts.commit);
}

cmStringT BrowseScreen::takeCopied()
{
    return std::exchange(m_copied, {});
}
