#include "filewatcher/git/browser/LogThreads.h"

#include <utility>

LogThreads& logThreads()
{
    static LogThreads threads;
    return threads;
}

void LogThreads::replace(std::shared_ptr<GitRunLogThread> log)
{
    std::erase_if(m_replaced, [](const auto& replaced) { return !replaced->isRunning(); });
    m_current.swap(log);
    if (log && log->isRunning()) {
        log->requestStop();
        m_replaced.push_back(std::move(log));
    }
}

void LogThreads::stopAll()
{
    replace(nullptr);
    for (const auto& replaced : m_replaced)
        replaced->join();
    m_replaced.clear();
}
