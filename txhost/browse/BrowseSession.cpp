#include "txhost/browse/BrowseSession.h"

#include <utility>

namespace {

constexpr std::int32_t loadingIntervalMs = 10;
constexpr std::int32_t noLimit = -1;

}  // namespace

BrowseSession::BrowseSession(Host& host, cmStringT repository, BrowseExchange& exchange)
    : m_host(host), m_repository(std::move(repository)), m_exchange(exchange)
{
}

BrowseSession::~BrowseSession() = default;

void BrowseSession::run()
{
    while (!m_exchange.hasLeft()) {
        const BrowseWants wants = m_exchange.wants();
        const bool hasMore = serve(wants);
        const std::int32_t pause = hasMore ? 0 : m_history->isLoading() ? loadingIntervalMs : noLimit;
        m_host.editor().runUntil([&] { return m_exchange.hasLeft() || m_exchange.wants() != wants; }, pause);
    }
    m_history.reset();
}

void BrowseSession::load(std::uint32_t number)
{
    if (m_history)
        m_edition = m_history->state().edition;
    m_history.reset();  // before the next one: there is one browser at a time
    m_history = std::make_unique<BrowsedHistory>(m_host, m_repository, number, m_edition);
}

/// Answers a part of what is wanted. Returns whether there is more to do at once.
bool BrowseSession::serve(const BrowseWants& wants)
{
    if (!m_history || m_history->load() != wants.load)
        load(wants.load);
    const bool hasMore = m_history->goOn(wants.filter);
    BrowseNews news;
    news.state = m_history->takeState();
    news.rows = m_history->takeRows(wants.firstRow, wants.rowCount);
    if (news.state || news.rows)
        m_exchange.tell(std::move(news));
    return hasMore;
}
