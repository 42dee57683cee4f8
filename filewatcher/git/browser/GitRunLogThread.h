#pragma once

#include "common/cmString.h"
#include "common/cmThread.h"
#include "filewatcher/git/GitCommand.h"
#include "filewatcher/git/commits/GitLogOutput.h"

#include <cstdint>

/// Runs the one long log command of a load and keeps its output until the model takes it. An object runs once; destroying it
/// stops the run and waits for its end. Any thread may call any operation except `run`.
class GitRunLogThread : public cmThread {
public:
    /// `logRestriction`: arguments that replace "all refs"; empty for none.
    GitRunLogThread(cmROStringT gitExePath, cmROStringT path, cmROStringT logRestriction);
    ~GitRunLogThread() override;

    std::int32_t run() override;

    /// Moves the complete records that were written since the last call into `records`. Returns 0 (also when there are none yet),
    /// or -1 once the log is done and holds no further complete record.
    int takeCompleteRecords(cmStringT& records);
    /// Whether the run has ended; records may still wait to be taken.
    bool isLogFinished();
    /// How the log ended; call after takeCompleteRecords has returned -1. The status is statusGitFailed, without a sentence, when
    /// git had nothing to write.
    GitOutcome outcome();

private:
    GitOutcome runLog();
    cmStringT commandLine() const;

    static inline cmMutex logOutputLock;

    const cmStringT m_gitExePath;
    const cmStringT m_path;
    const cmStringT m_logRestriction;
    GitLogOutput m_output CM_GUARDED_BY(logOutputLock);
    GitOutcome m_outcome CM_GUARDED_BY(logOutputLock);  ///< that memory ran out, until the run ends otherwise
};
