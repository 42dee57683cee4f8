#include "txhost/browse/BrowseSession.h"

#include <algorithm>
#include <utility>

namespace {

constexpr std::int32_t loadingIntervalMs = 10;
constexpr std::int32_t noLimit = -1;

}  // namespace

BrowseSession::BrowseSession(Host& host, cmStringT repository, BrowseExchange& exchange)
    : m_host(host), m_repository(std::move(repository)), m_exchange(exchange), m_answers(host, exchange)
{
    host.editor().keepTreeRows(false);
}

BrowseSession::~BrowseSession() = default;

void BrowseSession::run()
{
    while (!m_exchange.hasLeft()) {
        const BrowseWants wants = m_exchange.wants();
        m_hasNews = false;
        const bool hasMore = serve(wants);
        m_host.editor().runUntil([&] { return m_hasNews || m_exchange.hasLeft() || m_exchange.wants() != wants; },
                                 hasMore ? 0 : pauseMs());
    }
    m_history.reset();
}

/// Answers a part of what is wanted. Returns whether there is more to do at once.
bool BrowseSession::serve(const BrowseWants& wants)
{
    if (!m_history || m_history->load() != wants.load)
        load(wants.load);
    m_searcher.want(wants.search);
    m_answers.want(wants, m_history->watch().place());
    bool hasMore = m_history->goOn(wants.filter);
    tellRows(wants);
    hasMore = hasMore || m_searcher.hasMore();
    if (hasMore)
        return true;  // queries come last: they may take long
    if (m_history->isFailureDue()) {
        m_history->findFailure(m_answers.watch());
        return true;
    }
    return m_answers.goOn(*m_history);
}

void BrowseSession::tellRows(const BrowseWants& wants)
{
    BrowseNews news;
    news.state = m_history->takeState();
    news.rows = m_history->takeRows(wants.firstRow, wants.rowCount);
    news.found = m_searcher.goOn(m_history->commits(), m_history->browser(), m_history->isLoading());
    if (news.found)
        news.found->edition = m_history->edition();
    if (news.state || news.rows || news.found)
        m_exchange.tell(std::move(news));
}

void BrowseSession::load(std::uint32_t number)
{
    if (m_history)
        m_edition = m_history->edition();
    m_history.reset();  // before the next one: there is one browser at a time
    m_searcher = {};
    const auto wake = [this] { m_host.editor().post([this] { m_hasNews = true; }); };
    m_history = std::make_unique<BrowsedHistory>(m_host, m_repository, number, m_edition, observer(), wake);
}

EditorObserver BrowseSession::observer()
{
    EditorObserver observer;
    observer.passFailed = [this](const cmStringT& path, const cmStringT& reason) {
        if (LiveWorkingCopy* const live = m_answers.workingCopy())
            live->failPass(path, reason);
    };
    observer.passEnded = [this](const cmStringT& path, std::int32_t status) {
        m_hasNews = true;
        if (LiveWorkingCopy* const live = m_answers.workingCopy())
            live->endPass(path, status);
    };
    return observer;
}

/// How long to sleep unless something comes.
std::int32_t BrowseSession::pauseMs() const
{
    if (m_history->isLoading())
        return loadingIntervalMs;
    const QueryAnswers::Clock::time_point next = m_answers.next();
    if (next == QueryAnswers::Clock::time_point::max())
        return noLimit;
    const auto left = std::chrono::ceil<std::chrono::milliseconds>(next - QueryAnswers::Clock::now());
    return static_cast<std::int32_t>(std::max<std::chrono::milliseconds::rep>(left.count(), 0));
}
