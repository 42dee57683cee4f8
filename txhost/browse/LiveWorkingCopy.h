#pragma once

#include "txhost/FileDates.h"
#include "txhost/Host.h"
#include "txhost/browse/RepositoryWatch.h"

#include <chrono>
#include <optional>

/// Notices that the working copy has changed: by the module's status passes, one every two seconds, and by the date of git's
/// index. For the editor's thread.
class LiveWorkingCopy {
public:
    using Clock = std::chrono::steady_clock;

    LiveWorkingCopy(Host& host, const RepositoryPlace& place);

    // Notices of the editor about status passes.
    void failPass(const cmStringT& path, const cmStringT& reason);
    void endPass(const cmStringT& path, std::int32_t status);

    /// Looks at the index, and has the next status pass run when it is due.
    void goOn();
    /// When the next look is due.
    Clock::time_point nextLook() const { return m_nextLook; }
    /// Whether it may have changed since the last call. True at first.
    bool takeChanged();
    /// Why the last status pass or the last look at the index failed; null when neither did.
    const cmStringT& failure() const { return m_failure.isNull() ? m_indexFailure : m_failure; }

private:
    void lookAtIndex();

    Host& m_host;
    const RepositoryPlace m_place;
    Clock::time_point m_nextLook = Clock::now();
    bool m_isPassRunning = false;
    bool m_hasChanged = true;
    std::optional<FileDate> m_indexDate;
    cmStringT m_reason;  ///< of the pass that runs
    cmStringT m_failure;
    cmStringT m_indexFailure;
};
