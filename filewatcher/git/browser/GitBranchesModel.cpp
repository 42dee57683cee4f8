#include "filewatcher/git/browser/GitBranchesModel.h"

#include "common/cmDateTime.h"
#include "common/cmFile.h"
#include "common/cmStringCatHelper.h"
#include "filewatcher/bridge/DebugLog.h"
#include "filewatcher/git/GitCommand.h"

#include <atomic>
#include <string>
#include <utility>

namespace {

constexpr std::int32_t runStopped = -1;
constexpr std::uint32_t pollMs = 5;  // pause before the log thread is asked again
constexpr std::uint32_t firstRowsPauseMs = 500;
constexpr std::int32_t firstRows = 100;
constexpr std::uint32_t parsePauseMs = 100;  // after as much time of parsing, readers get a pause of this length
constexpr int recordsPerHold = 256;

// Written by the editor's thread, under the model's lock; read without it.
std::atomic<GitBranchesModel*> theModel{nullptr};

}  // namespace

cmMutex GitBranchesModel::modelLock;

GitBranchesModel* GitBranchesModel::instance(bool create)
{
    if (!theModel && create) {
        cmMutexLock hold(modelLock);
        theModel = new GitBranchesModel;
    }
    return theModel;
}

void GitBranchesModel::destroyInstance()
{
    GitBranchesModel* const model = theModel;
    if (!model)
        return;
    model->requestStop();
    model->join();
    cmMutexLock hold(modelLock);
    theModel = nullptr;
    delete model;
}

GitBranchesModel::GitBranchesModel() : m_history(std::make_unique<ShownHistory>())
{
    setName("GitBranchesModel");
    setStopEvent(&m_wakeEvent);
}

void GitBranchesModel::init(const GitLoadRequest& request)
{
    cmMutexLock hold(modelLock);
    m_request = request;
    debugLog("GitBranchesModel::init", __LINE__, cmStringT(cmCat("m_path.get()=") + request.path));
}

void GitBranchesModel::clearModel()
{
    // These take over the old objects and destroy them after the lock is released, because that may take a moment.
    auto history = std::make_unique<ShownHistory>();
    std::shared_ptr<GitRunLogThread> logThread;
    cmMutexLock hold(modelLock);
    m_history.swap(history);
    m_request.logThread.swap(logThread);
    m_loaded = false;
    m_pausePending = false;
}

void GitBranchesModel::setLogThread(std::shared_ptr<GitRunLogThread> logThread)
{
    // The old one is destroyed with the parameter, after the lock is released, because that waits for its end.
    cmMutexLock hold(modelLock);
    m_request.logThread.swap(logThread);
}

std::int32_t GitBranchesModel::run()
{
    m_wakeEvent.reset();
    using Step = std::int32_t (GitBranchesModel::*)();
    constexpr Step steps[] = {&GitBranchesModel::getCurrentlyCheckedOutBranchName, &GitBranchesModel::readRefs,
                              &GitBranchesModel::loadCommits};
    for (const Step step : steps) {
        if (stopRequested())
            return runStopped;
        (this->*step)();  // a step that fails leaves its part of the model empty; the others still run
    }
    cmMutexLock hold(modelLock);
    if (stopRequested())
        return runStopped;
    m_pausePending = false;
    m_loaded = true;
    return 0;
}

/// The lock is not held while git runs, because git may hang and the editor's thread reads the model. Both results are stored in
/// one step.
std::int32_t GitBranchesModel::getCurrentlyCheckedOutBranchName()
{
    constexpr const char* name = "GitBranchesModel::getCurrentlyCheckedOutBranchName";
    cmStringT output;
    std::int32_t status = runGit("--no-pager branch --no-color --no-column", output);
    if (status != 0)
        return status;
    const cmStringT current = currentBranchIn(output);
    const cmROStringT arguments = "--no-pager log --max-count=1 --pretty=format:%H";
    debugLog(name, __LINE__,
             cmStringT(cmCat("cmFile::getCurDir().get()=") + cmCurrentDirectory() + " path.get()=" + path()
                       + " cmdLine.get()=" + quotedGit(gitExePath()) + arguments));
    status = runGit(arguments, output);
    debugLog(name, __LINE__, cmStringT(cmCat("status=") + std::to_string(status)));
    cmMutexLock hold(modelLock);
    if (stopRequested())
        return runStopped;
    BranchTable& branches = m_history->branches();
    if (!current.isNull())
        branches.setCurrentName(current);
    if (status == 0 && !output.isEmpty()) {
        branches.setCurrentEndHash(output);
        debugLog(name, __LINE__, cmStringT(cmCat("currentBranchName.get()=") + branches.currentName()));
    }
    return status;
}

std::int32_t GitBranchesModel::readRemoteName(cmStringT& remoteName)
{
    cmStringT output;
    const std::int32_t status = runGit("remote show", output);
    if (status == 0)
        remoteName = cmWithoutLineEnd(output);
    return status;
}

std::int32_t GitBranchesModel::readRefs()
{
    cmStringT output;
    const std::int32_t status = runGit("show-ref --head", output);
    cmStringT remoteName("");
    readRemoteName(remoteName);
    GitRefs refs;
    refs.read(output, remoteName);
    cmMutexLock hold(modelLock);
    if (!stopRequested())
        m_history->setRefs(refs, !m_request.logRestriction.isEmpty());
    return status;
}

std::int32_t GitBranchesModel::loadCommits()
{
    cmStringT batch;
    while (!stopRequested()) {
        std::shared_ptr<GitRunLogThread> log;
        {
            cmMutexLock hold(modelLock);
            log = m_request.logThread;
        }
        if (!log || log->takeCompleteRecords(batch) != 0)
            break;
        if (batch.isEmpty())
            pause(pollMs);
        else
            parseRecords(batch);
    }
    return 0;
}

void GitBranchesModel::parseRecords(cmROStringT batch)
{
    std::uint32_t startTick = cmTickCount();
    for (bool more = true; more;) {
        bool firstPause = false;
        {
            cmMutexLock hold(modelLock);
            // The stop is checked under the lock: whoever clears the model requests it first, so nothing is added afterwards.
            more = m_history->addRecords(batch, recordsPerHold, [this] { return stopRequested(); });
            firstPause = m_pausePending && m_history->commitCount() > firstRows;
            m_pausePending = m_pausePending && !firstPause;
        }
        if (firstPause)
            pause(firstRowsPauseMs);
        if (cmTickCount() - startTick > parsePauseMs) {
            pause(parsePauseMs);
            startTick = cmTickCount();
        }
    }
}

std::int32_t GitBranchesModel::runGit(cmROStringT arguments, cmStringT& output)
{
    cmStringT line;
    cmStringT directory;
    {
        cmMutexLock hold(modelLock);
        line = quotedGit(m_request.gitExePath);
        directory = m_request.path;
    }
    line += arguments;
    output.clear();
    CaptureControl control;
    control.stopRequested = [this] { return stopRequested(); };
    return runGitCommand(line, directory, control, [&output](cmROStringT bytes) { output += bytes; }).status;
}

void GitBranchesModel::pause(std::uint32_t ms)
{
    if (!stopRequested())
        m_wakeEvent.wait(ms);
}
