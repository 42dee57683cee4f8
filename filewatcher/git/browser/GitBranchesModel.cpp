#include "filewatcher/git/browser/GitBranchesModel.h"

#include "common/cmDateTime.h"
#include "common/cmFile.h"
#include "common/cmStringCatHelper.h"
#include "filewatcher/StatusCodes.h"
#include "filewatcher/bridge/DebugLog.h"
#include "txapi/txapi.h"

#include <atomic>
#include <exception>
#include <string>
#include <utility>

namespace {

/// Lists the commits that tags lead to, with their tags.
constexpr cmROStringT tagsOfCommits =
    "--no-pager log --no-walk=unsorted --ignore-missing --tags --no-show-signature --decorate=full "
    "--decorate-refs=refs/tags \"--format=%H %D\"";
constexpr std::int32_t runStopped = -1;
constexpr std::uint32_t pollMs = 5;  // pause before the log thread is asked again
constexpr std::uint32_t firstRowsPauseMs = 500;
constexpr std::int32_t firstRows = 100;
constexpr std::uint32_t parsePauseMs = 100;  // after as much time of parsing, readers get a pause of this length
constexpr std::uint32_t quietMs = 100;       // a log without a new record for so long pauses
constexpr int recordsPerHold = 256;
constexpr std::uint32_t rowsPerHold = 4096;

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
    m_history = std::make_unique<ShownHistory>(request.logRestriction);
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
    if (!runPart(txGitLoadBranches, &GitBranchesModel::readBranches)
        || !runPart(txGitLoadCommits, &GitBranchesModel::loadCommits))
        return runStopped;
    cmMutexLock hold(modelLock);
    if (stopRequested())
        return runStopped;
    m_pausePending = false;
    m_loaded = true;
    return 0;
}

bool GitBranchesModel::runPart(std::int32_t part, GitOutcome (GitBranchesModel::*read)())
{
    GitOutcome outcome;
    try {
        if (!stopRequested())
            outcome = (this->*read)();
    } catch (const std::exception& failure) {
        outcome = {statusGitFailed, cmStringT(cmCat("the load broke off: ") + failure.what())};
    }
    if (stopRequested())
        return false;
    try {
        txGitLoadEnd(path(), part, outcome.status, outcome.sentence.isNull() ? cmStringT("") : outcome.sentence);
    } catch (const std::exception&) {
        // Memory ran out, so the editor cannot be told. The load goes on, and its rows are shown.
    }
    return true;
}

GitOutcome GitBranchesModel::readBranches()
{
    GitOutcome current = getCurrentlyCheckedOutBranchName();
    GitOutcome refs = stopRequested() ? GitOutcome() : readRefs();
    GitOutcome tags = stopRequested() ? GitOutcome() : readTags();
    if (current.status != 0)
        return current;
    return refs.status != 0 ? refs : tags;
}

/// The lock is not held while git runs, because git may hang and the editor's thread reads the model. Both results are stored in
/// one step.
GitOutcome GitBranchesModel::getCurrentlyCheckedOutBranchName()
{
    constexpr const char* name = "GitBranchesModel::getCurrentlyCheckedOutBranchName";
    cmStringT output;
    GitOutcome outcome = runGit("--no-pager branch --no-color --no-column", output);
    if (outcome.status != 0)
        return outcome;
    const cmStringT current = currentBranchIn(output);
    const cmROStringT arguments = "--no-pager log --max-count=1 --pretty=format:%H";
    debugLog(name, __LINE__,
             cmStringT(cmCat("cmFile::getCurDir().get()=") + cmCurrentDirectory() + " path.get()=" + path()
                       + " cmdLine.get()=" + quotedGit(gitExePath()) + arguments));
    outcome = runGit(arguments, output);
    debugLog(name, __LINE__, cmStringT(cmCat("status=") + std::to_string(outcome.status)));
    cmMutexLock hold(modelLock);
    if (stopRequested())
        return {runStopped, {}};
    BranchTable& branches = m_history->branches();
    if (!current.isNull())
        branches.setCurrentName(current);
    if (outcome.status == 0 && !output.isEmpty()) {
        branches.setCurrentEndHash(output);
        debugLog(name, __LINE__, cmStringT(cmCat("currentBranchName.get()=") + branches.currentName()));
    }
    return isUnbornBranch(outcome) ? GitOutcome() : outcome;
}

GitOutcome GitBranchesModel::readRemoteName(cmStringT& remoteName)
{
    cmStringT output;
    GitOutcome outcome = runGit("remote show", output);
    if (outcome.status == 0)
        remoteName = cmWithoutLineEnd(output);
    return outcome;
}

GitOutcome GitBranchesModel::readRefs()
{
    cmStringT output;
    const GitOutcome outcome = runGit("show-ref --head", output);
    // One broken ref ends show-ref, while for-each-ref lists all others. It reads no object in this format, and has no HEAD.
    if (outcome.status != 0 && runGit("for-each-ref \"--format=%(objectname) %(refname)\"", output).status == 0)
        output = cmCat(currentBranchEndHash()) + " HEAD\n" + output;
    cmStringT remoteName("");
    const GitOutcome remotes = readRemoteName(remoteName);
    GitRefs refs;
    refs.read(output, remoteName);
    BranchTable branches;
    {
        cmMutexLock hold(modelLock);
        branches = m_history->branches();
    }
    branches.assign(refs);
    cmMutexLock hold(modelLock);
    if (!stopRequested())
        m_history->setBranches(std::move(branches));
    return outcome.status != 0 ? outcome : remotes;
}

GitOutcome GitBranchesModel::readTags()
{
    cmStringT output;
    GitOutcome outcome = runGit("show-ref --tags --dereference", output);
    // One broken tag ends show-ref, while the log passes it over. When that fails too, the tags that show-ref named before
    // remain.
    cmStringT logged;
    if (outcome.status != 0 && runGit(tagsOfCommits, logged).status == 0)
        output = logged;
    TagTable tags;
    tags.read(output);
    cmMutexLock hold(modelLock);
    if (!stopRequested())
        m_history->setTags(std::move(tags));
    return outcome;
}

GitOutcome GitBranchesModel::loadCommits()
{
    std::shared_ptr<GitRunLogThread> log;
    {
        cmMutexLock hold(modelLock);
        log = m_request.logThread;
    }
    if (!log)
        return {statusGitFailed, {}};
    try {
        takeRecords(*log);
    } catch (...) {
        log->requestStop();  // nobody takes what it still reads
        finishLog();
        throw;
    }
    finishLog();
    GitOutcome outcome = log->outcome();
    cmMutexLock hold(modelLock);
    if (outcome.status == statusGitFailed && outcome.sentence.isEmpty() && m_request.logRestriction.isEmpty()
        && m_history->branches().anyTip())
        outcome.sentence = "git's log is empty although there are branches";
    return outcome;
}

void GitBranchesModel::takeRecords(GitRunLogThread& log)
{
    cmStringT batch;
    bool caughtUp = true;
    std::uint32_t lastRecordTick = 0;
    while (!stopRequested() && log.takeCompleteRecords(batch) == 0) {
        if (!batch.isEmpty()) {
            parseRecords(batch);
            lastRecordTick = cmTickCount();  // not before: parsing makes pauses of its own
            caughtUp = false;
            continue;
        }
        if (!caughtUp && cmTickCount() - lastRecordTick >= quietMs) {
            cmMutexLock hold(modelLock);
            if (!stopRequested())
                m_history->catchUp();
            caughtUp = true;
        }
        pause(pollMs);
    }
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

void GitBranchesModel::finishLog()
{
    for (bool more = true; more;) {
        cmMutexLock hold(modelLock);
        more = !stopRequested() && m_history->finishLog(rowsPerHold);
    }
}

GitOutcome GitBranchesModel::runGit(cmROStringT arguments, cmStringT& output)
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
    return runGitCommand(line, directory, control, [&output](cmROStringT bytes) { output += bytes; });
}

void GitBranchesModel::pause(std::uint32_t ms)
{
    if (!stopRequested())
        m_wakeEvent.wait(ms);
}
