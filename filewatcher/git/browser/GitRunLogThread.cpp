#include "filewatcher/git/browser/GitRunLogThread.h"

#include "common/cmFile.h"
#include "common/cmStringCatHelper.h"
#include "filewatcher/StatusCodes.h"
#include "filewatcher/bridge/DebugLog.h"
#include "filewatcher/git/GitCommand.h"

#include <algorithm>
#include <string>
#include <utility>

namespace {

constexpr char recordEnd = '\x01';

cmROStringT withoutLeadingLineFeeds(cmROStringT text)
{
    return text.substr(std::min(text.find_first_not_of('\n'), text.size()));
}

}  // namespace

GitRunLogThread::GitRunLogThread(cmROStringT gitExePath, cmROStringT path, cmROStringT logRestriction)
    : m_gitExePath(gitExePath), m_path(path), m_logRestriction(logRestriction)
{
}

GitRunLogThread::~GitRunLogThread()
{
    requestStop();
    join();
}

std::int32_t GitRunLogThread::run()
{
    // However the run ends: the model waits for it.
    struct Finish {
        GitRunLogThread& thread;
        ~Finish()
        {
            cmMutexLock hold(logOutputLock);
            thread.m_done = true;
        }
    } finish{*this};
    setName("GitRunLogThread");
    return runLog();
}

std::int32_t GitRunLogThread::runLog()
{
    const cmStringT line = commandLine();
    CaptureControl control;
    control.stopRequested = [this] { return stopRequested(); };
    std::int32_t status = runGitCommand(line, m_path, control, [this](cmROStringT bytes) { append(bytes); });
    if (status == statusStopRequested)
        return statusGitFailed;
    debugLog("GitRunLogThread::runLog", __LINE__,
             cmStringT(cmCat("status=") + std::to_string(status) + " m_path.get()=" + m_path
                       + " cmFile::getCurDir().get()=" + cmCurrentDirectory() + " cmdLine.get()=" + line + " "));
    cmMutexLock hold(logOutputLock);
    if (status == 0 && !m_anyOutput)
        status = statusGitFailed;
    return status;
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

void GitRunLogThread::append(cmROStringT bytes)
{
    cmMutexLock hold(logOutputLock);
    m_anyOutput = true;
    m_output.append(m_output.isEmpty() ? withoutLeadingLineFeeds(bytes) : bytes);
}

int GitRunLogThread::takeCompleteRecords(cmStringT& records)
{
    cmMutexLock hold(logOutputLock);
    records.clear();
    const std::size_t end = m_output.view().substr(m_scanned).rfind(recordEnd);
    if (end == cmROStringT::npos) {
        m_scanned = m_output.length();
        return m_done && m_output.isEmpty() ? -1 : 0;
    }
    const std::size_t length = m_scanned + end + 1;
    std::swap(records, m_output);
    m_output.assign(withoutLeadingLineFeeds(records.view().substr(length)));
    m_scanned = m_output.length();
    records.truncate(length);
    return 0;
}

bool GitRunLogThread::isLogFinished()
{
    cmMutexLock hold(logOutputLock);
    return m_done;
}
