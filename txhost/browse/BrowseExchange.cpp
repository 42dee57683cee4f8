#include "txhost/browse/BrowseExchange.h"

#include <utility>

BrowseExchange::BrowseExchange(std::function<void()> wakeSession, std::function<void()> wakeScreen)
    : m_wakeSession(std::move(wakeSession)), m_wakeScreen(std::move(wakeScreen))
{
}

void BrowseExchange::want(const BrowseWants& wants)
{
    {
        const cmMutexLock hold(m_lock);
        if (wants == m_wants)
            return;
        m_wants = wants;
    }
    m_wakeSession();
}

BrowseNews BrowseExchange::takeNews()
{
    const cmMutexLock hold(m_lock);
    return std::exchange(m_news, {});
}

void BrowseExchange::leave()
{
    {
        const cmMutexLock hold(m_lock);
        m_hasLeft = true;
    }
    m_wakeSession();
}

BrowseWants BrowseExchange::wants()
{
    const cmMutexLock hold(m_lock);
    return m_wants;
}

bool BrowseExchange::hasLeft()
{
    const cmMutexLock hold(m_lock);
    return m_hasLeft;
}

void BrowseExchange::tell(BrowseNews news)
{
    const auto replace = [](auto& kept, auto& part, bool isThere) {
        if (isThere)
            kept = std::move(part);
    };
    {
        const cmMutexLock hold(m_lock);
        replace(m_news.state, news.state, news.state.has_value());
        replace(m_news.rows, news.rows, news.rows.has_value());
        replace(m_news.details, news.details, news.details != nullptr);
        replace(m_news.history, news.history, news.history != nullptr);
        replace(m_news.found, news.found, news.found.has_value());
        replace(m_news.workingCopy, news.workingCopy, !news.workingCopy.isNull());
    }
    m_wakeScreen();
}
