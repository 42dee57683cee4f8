#include "txhost/browse/BrowseScreen.h"

#include "common/cmStringCatHelper.h"
#include "filewatcher/git/commits/ShortHash.h"
#include "txhost/browse/NameChoice.h"

// How BrowseScreen goes to other commits.

namespace {

constexpr std::size_t leastDigits = 4;  // of a hash that git looks up

bool isHash(cmROStringT text)
{
    return text.size() >= leastDigits && text.find_first_not_of("0123456789abcdefABCDEF") == cmROStringT::npos;
}

/// The commit at the other end of a line that is cut in this row or the one above; null when there is none. The lines above are
/// those that reach the row's own commit from a child.
cmStringT otherEnd(const HistoryRow& row, const HistoryRow* above, bool isDownFirst)
{
    cmArray<cmStringT> down;
    cmArray<cmStringT> up;
    for (const GraphEdge& edge : row.graph.edges) {
        if (edge.kind == GraphEdgeKind::stub || (edge.kind == GraphEdgeKind::begins && !edge.otherHash.isEmpty()))
            down.push_back(edge.otherHash);
        if (edge.kind == GraphEdgeKind::arrowUp && edge.to == row.graph.column)
            up.push_back(edge.otherHash);
    }
    if (above) {
        for (const GraphEdge& edge : above->graph.edges) {
            if (edge.kind == GraphEdgeKind::arrowUp && edge.to != above->graph.column)
                up.push_back(edge.otherHash);
        }
    }
    for (const GraphEdge& edge : row.graph.edges) {
        if (edge.kind == GraphEdgeKind::arrowDown)
            down.push_back(edge.otherHash);
    }
    const cmArray<cmStringT>& first = isDownFirst ? down : up;
    const cmArray<cmStringT>& second = isDownFirst ? up : down;
    return !first.empty() ? first.front() : !second.empty() ? second.front() : cmStringT();
}

}  // namespace

void BrowseScreen::goTo(const cmStringT& hash)
{
    m_revisions.close();
    const std::int32_t known = hash.isEmpty() ? 0 : m_history.cache().find(hash);
    if (known >= 0)
        goToRow(known);
    else
        m_finder.start(RowFinder::Purpose::go, SearchKind::hash, hash);
}

void BrowseScreen::goToRow(std::int32_t row)
{
    m_finder.cancel();
    m_history.jumpTo(row);
}

/// To where the cursor was when the prompt was opened: that may be in another row by now.
void BrowseScreen::goBackFromPrompt()
{
    if (m_promptEdition == m_history.state().edition)
        goToRow(m_promptRow);
    else if (m_promptHash)
        goTo(*m_promptHash);
}

void BrowseScreen::goToParent()
{
    const auto known = knownOfSelected();
    const CommitDetails* details = m_revisions.isOpen() ? below().commit.details() : known.get();
    if (!details || details->parents.empty())
        return say("no parent");
    goTo(details->parents.front());
}

void BrowseScreen::goToChild()
{
    const std::optional<cmStringT> hash = selectedHash();
    if (!hash || hash->isEmpty())
        return say("no child");
    m_revisions.close();
    m_finder.start(RowFinder::Purpose::go, SearchKind::child, *hash, m_history.window().cursor(), true);
}

void BrowseScreen::goToHead()
{
    jumpTo("@");
}

void BrowseScreen::followLine(bool isDownFirst)
{
    const HistoryRow* row = m_revisions.isOpen() ? nullptr : m_history.selected();
    const cmStringT hash =
        row ? otherEnd(*row, m_history.cache().row(m_history.window().cursor() - 1), isDownFirst) : cmStringT();
    if (hash.isNull())
        return say("no line is cut here");
    goTo(hash);
}

void BrowseScreen::jumpTo(cmROStringT text)
{
    const cmArray<GitRefName> none;
    const auto& names = m_history.state().names;
    cmStringT hash = hashOfName(names ? *names : none, text);
    if (hash.isNull()) {
        const cmArray<cmStringT> like = namesLike(names ? *names : none, text, 1);
        const bool isWhole = text.size() >= shortHashLength;
        if (isHash(text) && (isWhole || like.empty()))
            hash = text;
        else if (!like.empty())
            hash = hashOfName(*names, like.front());
    }
    if (hash.isNull())
        return say(names ? cmStringT(cmCat("no branch, tag or hash: ") + text) : cmStringT("the names are not read yet"));
    goTo(hash);
}

void BrowseScreen::searchOn(bool backwards)
{
    if (m_searched.isEmpty())
        return say("nothing was searched: / begins");
    m_revisions.close();
    const std::int32_t next = m_history.window().cursor() + (backwards ? -1 : 1);
    m_finder.start(RowFinder::Purpose::match, SearchKind::text, m_searched, next, backwards);
}
