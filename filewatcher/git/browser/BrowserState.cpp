#include "filewatcher/git/browser/BrowserState.h"

#include "filewatcher/git/browser/fillBranchTree.h"
#include "txapi/txapi.h"

#include <utility>

namespace {

constexpr std::int32_t refreshMs = 300;

}  // namespace

BrowserState& browserState()
{
    static BrowserState state;
    return state;
}

void BrowserState::armTimer(std::int32_t ms)
{
    if (!isTimerArmed())
        m_timer = txSetTimer(ms, &fillBranchTree);
}

void BrowserState::killTimer()
{
    if (isTimerArmed())
        txKillTimer(std::exchange(m_timer, -1));
}

void BrowserState::requestRefresh(const RefreshRequest& request)
{
    armTimer(refreshMs);
    refreshRequest = request;
}

void BrowserState::replaceLog(std::shared_ptr<GitRunLogThread> log)
{
    std::erase_if(m_retired, [](const auto& retired) { return !retired->isRunning(); });
    m_log.swap(log);
    if (log && log->isRunning()) {
        log->requestStop();
        m_retired.push_back(std::move(log));
    }
}

void BrowserState::stopLogs()
{
    replaceLog(nullptr);
    for (const auto& retired : m_retired)
        retired->join();
    m_retired.clear();
}
