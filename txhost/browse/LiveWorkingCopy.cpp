#include "txhost/browse/LiveWorkingCopy.h"

#include <utility>

namespace {

constexpr std::chrono::seconds betweenLooks{2};
constexpr std::int32_t budgetMs = 1000;  // for a file that hangs, once
constexpr std::int32_t isAdded = -1;     // what filewatcherAddPath returns of a thread that runs

}  // namespace

LiveWorkingCopy::LiveWorkingCopy(Host& host, const RepositoryPlace& place) : m_host(host), m_place(place) {}

void LiveWorkingCopy::failPass(const cmStringT& path, const cmStringT& reason)
{
    if (path == m_place.root)
        m_reason = reason;
}

void LiveWorkingCopy::endPass(const cmStringT& path, std::int32_t status)
{
    if (path != m_place.root)
        return;
    m_isPassRunning = false;
    const cmStringT failure = status == 0 ? cmStringT() : failureOf(status, std::exchange(m_reason, {}), {}, {}).message;
    m_hasChanged |= !m_host.editor().takeChangedRecords().empty() || failure != m_failure;
    m_failure = failure;
}

void LiveWorkingCopy::lookAtIndex()
{
    cmStringT failure;
    try {
        const FileDates dates = askFileDates(m_host, {m_place.index}, budgetMs);
        if (const auto date = dates.known.find(m_place.index); date != dates.known.end()) {
            m_hasChanged |= m_indexDate && *m_indexDate != date->second;
            m_indexDate = date->second;
        }
    } catch (const HostError& error) {  // may have passed at the next look
        failure = error.failure().message;
    }
    m_hasChanged |= failure != m_indexFailure;
    m_indexFailure = failure;
}

void LiveWorkingCopy::goOn()
{
    if (Clock::now() < m_nextLook)
        return;
    m_nextLook = Clock::now() + betweenLooks;
    lookAtIndex();
    if (m_isPassRunning)
        return;
    const std::int32_t status = m_host.call("filewatcherAddPath", {m_place.root, gitTool.number, 1});
    if (status == 0 || status == isAdded)
        m_isPassRunning = true;
    else
        endPass(m_place.root, status);
}

bool LiveWorkingCopy::takeChanged()
{
    return std::exchange(m_hasChanged, false);
}
