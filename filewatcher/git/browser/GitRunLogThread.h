#pragma once

#include "common/cmString.h"
#include "common/cmThread.h"

#include <cstddef>
#include <cstdint>

/// Runs the one long log command of a load and keeps its output until the model takes it. Runs once. Destroying it stops it.
/// Any thread may call any operation but the body.
class GitRunLogThread : public cmThread {
public:
    /// `logRestriction`: arguments that take the place of "all refs", or empty.
    GitRunLogThread(cmROStringT gitExePath, cmROStringT path, cmROStringT logRestriction);
    ~GitRunLogThread() override;

    std::int32_t run() override;

    /// Moves the complete records that have come since the last call into `records`, each with the byte 1 that ends it.
    /// 0; -1 when there was nothing and nothing more will come.
    int takeCompleteRecords(cmStringT& records);
    /// Whether all output has come. Asked before the last records are taken, not after: else they are lost.
    bool isLogFinished();

private:
    std::int32_t runLog();
    cmStringT commandLine() const;
    void append(cmROStringT bytes);

    static inline cmMutex logOutputLock;

    const cmStringT m_gitExePath;
    const cmStringT m_path;
    const cmStringT m_logRestriction;
    cmStringT m_output CM_GUARDED_BY(logOutputLock);         ///< what nobody has taken yet
    std::size_t m_scanned CM_GUARDED_BY(logOutputLock) = 0;  ///< no record ends before
    bool m_anyOutput CM_GUARDED_BY(logOutputLock) = false;
    bool m_done CM_GUARDED_BY(logOutputLock) = false;
};
