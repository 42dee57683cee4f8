#include "txhost/browse/QueryWatch.h"

#include "txhost/HostSystem.h"

namespace {

constexpr std::uint32_t checkIntervalMs = 20;
constexpr std::uint32_t obsoleteMs = 300;   // until a query ends that is not wanted any more
constexpr std::uint32_t inTheWayMs = 1000;  // until one ends that is wanted as something else is, which waits for it

}  // namespace

QueryWatch::QueryWatch(BrowseExchange& exchange) : m_exchange(exchange), m_editorThread(currentThreadNumber())
{
    setStopEvent(&m_wake);
    start();
}

QueryWatch::~QueryWatch()
{
    requestStop();
    join();
}

bool QueryWatch::run(const std::function<bool(const BrowseWants&)>& isWanted, const std::function<void()>& query)
{
    {
        const cmMutexLock hold(m_lock);
        m_query = Query{m_exchange.wants(), isWanted};
    }
    m_wake.set();
    bool wasEnded = false;
    const auto end = [&] {
        const cmMutexLock hold(m_lock);
        wasEnded = m_query->wasEnded;
        m_query.reset();
    };
    try {
        query();
    } catch (...) {
        end();
        throw;
    }
    end();
    return !wasEnded && !m_exchange.hasLeft() && (!isWanted || isWanted(m_exchange.wants()));
}

std::int32_t QueryWatch::run()
{
    bool isBusy = false;
    while (!stopRequested()) {
        m_wake.wait(isBusy ? checkIntervalMs : cmWaitInfinite);
        isBusy = look();
    }
    return 0;
}

/// Returns whether to look again soon.
bool QueryWatch::look()
{
    const cmMutexLock hold(m_lock);  // so that no other query begins while the children of this one end
    if (m_exchange.hasLeft()) {
        endChildProcesses();  // again and again: the module may start another tool
        return true;
    }
    if (!m_query)
        return false;
    const BrowseWants wants = m_exchange.wants();
    const bool isAlone = wants == m_query->wants;
    m_query->unwantedMs = isAlone ? 0 : m_query->unwantedMs + checkIntervalMs;
    const bool isObsolete = !isAlone && (!m_query->isWanted || !m_query->isWanted(wants));
    if (m_query->unwantedMs >= (isObsolete ? obsoleteMs : inTheWayMs)) {
        m_query->wasEnded = true;
        endChildProcessesOf(m_editorThread);
    }
    return true;
}
