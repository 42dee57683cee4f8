#include "txhost/browse/QueryWatch.h"

#include "txhost/Failure.h"
#include "txhost/HostSystem.h"

#include <new>

namespace {

constexpr std::uint32_t checkIntervalMs = 20;
constexpr std::uint32_t obsoleteMs = 300;  // until a query ends that is in the way and that nobody wants
constexpr std::uint32_t wantedMs = 1000;   // until one ends that is wanted like what it is in the way of

}  // namespace

QueryWatch::QueryWatch(BrowseExchange& exchange) : m_exchange(exchange), m_editorThread(currentThreadNumber())
{
    setStopEvent(&m_wake);
    if (start() != 0)
        throw HostError("no thread can be had");
}

QueryWatch::~QueryWatch()
{
    requestStop();
    join();
}

bool QueryWatch::run(const IsWanted& isWanted, bool isInTheWay, const std::function<void()>& query)
{
    {
        const cmMutexLock hold(m_lock);
        m_query = Query{m_exchange.wants(), isWanted, isInTheWay};
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
        try {
            isBusy = look();
        } catch (const std::bad_alloc&) {
            isBusy = true;
        }
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
    const bool isInTheWay = m_query->isInTheWay || wants != m_query->wants;
    m_query->inTheWayMs = isInTheWay ? m_query->inTheWayMs + checkIntervalMs : 0;
    const bool isWanted = m_query->isWanted && m_query->isWanted(wants);
    if (m_query->inTheWayMs >= (isWanted ? wantedMs : obsoleteMs)) {
        m_query->wasEnded = true;
        endChildProcessesOf(m_editorThread);
    }
    return true;
}
