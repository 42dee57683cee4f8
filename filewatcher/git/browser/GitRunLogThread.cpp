#include "filewatcher/git/browser/GitRunLogThread.h"

#include "common/cmFile.h"
#include "common/cmStringCatHelper.h"
#include "filewatcher/StatusCodes.h"
#include "filewatcher/bridge/DebugLog.h"
#include "filewatcher/git/GitCommand.h"

#include <string>
#include <utility>

GitRunLogThread::GitRunLogThread(cmROStringT gitExePath, cmROStringT path, cmROStringT logRestriction)
    : m_gitExePath(gitExePath), m_path(path),
      m_logRestriction(logRestriction), m_outcome{statusGitFailed, "memory ran out while git's log was read"}
{
}

GitRunLogThread::~GitRunLogThread()
{
    requestStop();
    join();
}

std::int32_t GitRunLogThread::run()
{
    // The model waits for the end of the output, so it is marked even when memory runs out: Finish allocates none.
    struct Finish {
        GitRunLogThread& thread;
        ~Finish()
        {
            cmMutexLock hold(logOutputLock);
            thread.m_output.finish();
        }
    } finish{*this};
    setName("GitRunLogThread");
    GitOutcome outcome = runLog();
    const std::int32_t status = outcome.status;
    cmMutexLock hold(logOutputLock);
    m_outcome = std::move(outcome);
    return status;
}

GitOutcome GitRunLogThread::runLog()
{
    const cmStringT line = commandLine();
    CaptureControl control;
    control.stopRequested = [this] { return stopRequested(); };
    GitOutcome outcome = runGitCommand(line, m_path, control, [this](cmROStringT bytes) {
        cmMutexLock hold(logOutputLock);
        m_output.append(bytes);
    });
    if (outcome.status == statusStopRequested)
        return {statusGitFailed, {}};
    debugLog("GitRunLogThread::runLog", __LINE__,
             cmStringT(cmCat("status=") + std::to_string(outcome.status) + " m_path.get()=" + m_path
                       + " cmFile::getCurDir().get()=" + cmCurrentDirectory() + " cmdLine.get()=" + line + " "));
    cmMutexLock hold(logOutputLock);
    if (isUnbornBranch(outcome) || (outcome.status == 0 && !m_output.hadOutput()))
        return {statusGitFailed, {}};
    return outcome;
}

cmStringT GitRunLogThread::commandLine() const
{
    cmStringT line = quotedGit(m_gitExePath);
    line += " --no-pager log ";
    line += " --date=iso ";
    if (m_logRestriction.isEmpty())
        line += " --all ";
    line += " \"--pretty=format:%H%x00%P%x00%ct%x00%ae%x00%an%x00%s%x01\" ";
    line += m_logRestriction;
    return line;
}

int GitRunLogThread::takeCompleteRecords(cmStringT& records)
{
    cmMutexLock hold(logOutputLock);
    return m_output.takeCompleteRecords(records);
}

bool GitRunLogThread::isLogFinished()
{
    cmMutexLock hold(logOutputLock);
    return m_output.isFinished();
}

GitOutcome GitRunLogThread::outcome()
{
    cmMutexLock hold(logOutputLock);
    if (m_outcome.status == 0 && m_output.endsInsideRecord())
        return {statusGitFailed, "git's log ends in the middle of a commit"};
    return m_outcome;
}
