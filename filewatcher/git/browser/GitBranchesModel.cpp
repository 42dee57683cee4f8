#include "filewatcher/git/browser/GitBranchesModel.h"

#include "common/cmDateTime.h"
#include "common/cmFile.h"
#include "common/cmStringCatHelper.h"
#include "filewatcher/StatusCodes.h"
#include "filewatcher/bridge/DebugLog.h"
#include "filewatcher/git/GitCommand.h"
#include "filewatcher/git/browser/CommitFilter.h"

#include <algorithm>
#include <atomic>
#include <numeric>
#include <string>
#include <utility>

namespace {

constexpr std::int32_t runStopped = -1;
constexpr std::int64_t noRow = -1;
constexpr std::uint32_t pollMs = 5;  // how long a look for more of the log waits when there was nothing
constexpr std::uint32_t firstRowsPauseMs = 500;
constexpr std::int32_t firstRows = 100;
constexpr std::uint32_t parsePauseMs = 100;  // of every two such spans, one is the readers'
constexpr int recordsPerHold = 256;

// Changed by the editor's thread, under the model's lock; read without it.
std::atomic<GitBranchesModel*> theModel{nullptr};

}  // namespace

cmMutex GitBranchesModel::modelLock;
std::int32_t GitBranchesModel::published = 0;

/// A layout with the commits that it shows.
template <class Commits>
struct GitBranchesModel::Graph {
    template <class... Arguments>
    explicit Graph(Arguments&&... arguments) : commits(std::forward<Arguments>(arguments)...)
    {
    }
    Commits commits;
    GraphLayout layout{commits};
};

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
    published = 0;
    delete model;
}

GitBranchesModel::GitBranchesModel() : m_graph(std::make_unique<Graph<AllCommits>>(m_store))
{
    setName("GitBranchesModel");
    setStopEvent(&m_wakeEvent);
}

GitBranchesModel::~GitBranchesModel() = default;

void GitBranchesModel::init(const GitLoadRequest& request)
{
    cmMutexLock hold(modelLock);
    m_gitExePath = request.gitExePath;
    m_path = request.path;
    debugLog("GitBranchesModel::init", __LINE__, cmStringT(cmCat("m_path.get()=") + m_path));
    m_loadLimit = request.loadLimit;
    m_logRestriction = request.logRestriction;
    published = 0;
    m_logThread = request.logThread;
}

void GitBranchesModel::clearModel()
{
    cmMutexLock hold(modelLock);
    m_filtered.reset();
    m_store.clear();
    m_graph = std::make_unique<Graph<AllCommits>>(m_store);
    m_onCurrentBranch.clear();
    m_branches.clear();
    m_branchesAt.clear();
    m_headHash.clear();
    m_currentBranchName.clear();
    m_currentBranchEndHash.clear();
    m_loaded = false;
    m_pausePending = false;
    published = 0;
    m_logThread.reset();
}

void GitBranchesModel::setLogThread(std::shared_ptr<GitRunLogThread> logThread)
{
    // The old one goes when the lock is free: its end may take a moment.
    cmMutexLock hold(modelLock);
    m_logThread.swap(logThread);
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
        (this->*step)();  // one that fails leaves out what it would have told
    }
    cmMutexLock hold(modelLock);
    if (stopRequested())
        return runStopped;
    m_pausePending = false;
    m_loaded = true;
    return 0;
}

/// git may take its time or hang, and the editor's thread asks for what the lock guards: so git runs without it, and both answers
/// appear at once.
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
    if (!current.isNull())
        m_currentBranchName = current;
    if (status == 0 && !output.isEmpty()) {
        m_currentBranchEndHash = output;
        debugLog(name, __LINE__, cmStringT(cmCat("currentBranchName.get()=") + m_currentBranchName));
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
        numberBranches(refs);
    return status;
}

void GitBranchesModel::numberBranches(const GitRefs& refs)
{
    m_branches = refs.numbered(m_currentBranchName, m_currentBranchEndHash);
    for (std::size_t number = 0; number < m_branches.size(); ++number) {
        const std::uint32_t tip = m_store.intern(m_branches[number].hash);
        if (tip != CommitStore::none)
            m_branchesAt[tip].push_back(static_cast<std::int64_t>(number));
    }
    m_headHash = refs.headHash();
    m_onCurrentBranch.begin(CommitIds::workingCopy);
    const std::uint32_t head = m_store.intern(m_headHash);
    if (head == CommitStore::none)
        return;
    m_onCurrentBranch.begin(head);
    // In a restricted log HEAD may never come: a line to it would have no end.
    if (m_logRestriction.isEmpty())
        m_graph->commits.setWorkingCopyParent(head);
}

std::int32_t GitBranchesModel::loadCommits()
{
    cmStringT batch;
    while (!stopRequested()) {
        std::shared_ptr<GitRunLogThread> log;
        {
            cmMutexLock hold(modelLock);
            log = m_logThread;
        }
        if (!log)
            break;
        const bool finished = log->isLogFinished();  // first: what comes in between is taken then
        log->takeCompleteRecords(batch);
        if (!batch.isEmpty()) {
            parseRecords(batch);
        } else if (finished) {
            break;
        } else {
            pause(pollMs);
        }
    }
    return 0;
}

void GitBranchesModel::parseRecords(cmROStringT batch)
{
    std::uint32_t begun = cmTickCount();
    while (!batch.empty() && !stopRequested()) {
        parseSomeRecords(batch);
        bool firstPause = false;
        {
            cmMutexLock hold(modelLock);
            firstPause = m_pausePending && published > firstRows;
            m_pausePending = m_pausePending && !firstPause;
        }
        if (firstPause)
            pause(firstRowsPauseMs);
        if (cmTickCount() - begun > parsePauseMs) {
            pause(parsePauseMs);
            begun = cmTickCount();
        }
    }
}

void GitBranchesModel::parseSomeRecords(cmROStringT& batch)
{
    cmMutexLock hold(modelLock);
    GitLogRecord record;
    // The stop is looked for under the lock: who clears the model has requested it before.
    for (int count = 0; count < recordsPerHold && !stopRequested() && takeGitLogRecord(batch, record); ++count) {
        if (m_store.count() == 0)
            addWorkingCopy();
        if (!m_store.add(record))
            continue;
        m_onCurrentBranch.arrived(m_store, m_store.count() - 1);
        ++published;
    }
    // At once, so that what is published can be shown, whatever else the batch holds.
    m_graph->layout.extend(m_store.count());
}

void GitBranchesModel::addWorkingCopy()
{
    m_store.addWorkingCopy();
    ++published;
}

std::int32_t GitBranchesModel::runGit(cmROStringT arguments, cmStringT& output)
{
    cmStringT line;
    cmStringT directory;
    {
        cmMutexLock hold(modelLock);
        line = quotedGit(m_gitExePath);
        directory = m_path;
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

bool GitBranchesModel::isLogRunning()
{
    cmMutexLock hold(modelLock);
    return m_logThread && m_logThread->isRunning();
}

bool GitBranchesModel::isLoaded()
{
    cmMutexLock hold(modelLock);
    return m_loaded;
}

std::int32_t GitBranchesModel::loadLimit()
{
    cmMutexLock hold(modelLock);
    return m_loadLimit;
}

cmStringT GitBranchesModel::path()
{
    cmMutexLock hold(modelLock);
    return m_path;
}

cmStringT GitBranchesModel::gitExePath()
{
    cmMutexLock hold(modelLock);
    return m_gitExePath;
}

cmStringT GitBranchesModel::currentBranchEndHash()
{
    cmMutexLock hold(modelLock);
    return m_currentBranchEndHash;
}

bool GitBranchesModel::getBranchName(std::int64_t number, cmStringT& name)
{
    cmMutexLock hold(modelLock);
    if (number < 0 || static_cast<std::size_t>(number) >= m_branches.size())
        return false;
    name = m_branches[static_cast<std::size_t>(number)].name;
    return true;
}

cmStringT GitBranchesModel::branchHash(std::int64_t number)
{
    cmMutexLock hold(modelLock);
    if (number < 0 || static_cast<std::size_t>(number) >= m_branches.size())
        return "";
    return m_branches[static_cast<std::size_t>(number)].hash;
}

std::int32_t GitBranchesModel::publishedCommitCount()
{
    cmMutexLock hold(modelLock);
    return published;
}

std::int32_t GitBranchesModel::copyCommit(std::int64_t number, GitCommitInfo& info)
{
    cmMutexLock hold(modelLock);
    if (number < 0 || number >= published)
        return -1;
    const auto index = static_cast<std::uint32_t>(number);
    const std::int64_t row = rowOf(index);
    if (row < 0 && index != 0)
        return -1;
    copyKnown(index, info);
    return 0;
}

bool GitBranchesModel::findCommit(cmROStringT hash, GitCommitInfo& info)
{
    cmMutexLock hold(modelLock);
    const std::uint32_t number = m_store.find(hash);
    if (number == CommitStore::none)
        return false;
    copyKnown(number, info);
    return true;
}

void GitBranchesModel::copyKnown(std::uint32_t number, GitCommitInfo& info)
{
    m_store.copy(number, info);
    info.row = rowOf(number);
    const std::uint32_t id = m_store.idOf(number);
    info.onCurrentBranch = m_onCurrentBranch.isMarked(id) ? 1 : 0;
    if (number == 0) {
        info.branchNumbers = {0};
        info.pendingBranches = {{m_headHash}};
        return;
    }
    const auto branches = m_branchesAt.find(id);
    if (branches != m_branchesAt.end())
        info.branchNumbers = branches->second;
    addPendingBranches(number, info);
}

void GitBranchesModel::addPendingBranches(std::uint32_t number, GitCommitInfo& info)
{
    if (m_filtered)
        return;  // no line goes to a commit that is not shown
    GraphNode node;
    m_graph->commits.node(number, node);
    for (const GraphNode::Parent& parent : node.parents) {
        const std::uint32_t parentNumber = m_store.numberOf(parent.id);
        if (parentNumber == CommitStore::none || rowOf(parentNumber) < 0)
            info.pendingBranches.push_back({m_store.hashText(parent.id)});
    }
}

std::int32_t GitBranchesModel::shownCount()
{
    cmMutexLock hold(modelLock);
    return static_cast<std::int32_t>(shownLayout().rowCount());
}

std::int64_t GitBranchesModel::shownCommit(std::int32_t row)
{
    cmMutexLock hold(modelLock);
    return m_filtered ? m_filtered->commits.numbers()[static_cast<std::size_t>(row)] : row;
}

std::int64_t GitBranchesModel::rowOf(std::uint32_t number)
{
    if (!m_filtered)
        return number < m_graph->layout.rowCount() ? number : noRow;
    const std::uint32_t row = m_filtered->commits.rowOf(number);
    return row == CommitStore::none ? noRow : row;
}

GraphLayout& GitBranchesModel::shownLayout()
{
    return m_filtered ? m_filtered->layout : m_graph->layout;
}

std::int32_t GitBranchesModel::copyGraphRow(std::int64_t number, GraphRow& row)
{
    cmMutexLock hold(modelLock);
    if (number < 0 || number >= published)
        return -1;
    const std::int64_t index = rowOf(static_cast<std::uint32_t>(number));
    if (index < 0)
        return -1;
    shownLayout().row(static_cast<std::uint32_t>(index), row);
    return 0;
}

std::int32_t GitBranchesModel::graphWidth()
{
    cmMutexLock hold(modelLock);
    return shownLayout().widest();
}

bool GitBranchesModel::filter(cmROStringT text)
{
    cmMutexLock hold(modelLock);
    if (text.empty()) {
        m_filtered.reset();
        return true;
    }
    const cmArray<std::uint32_t> found = filterCommits(m_store, text);
    if (found.empty())
        return false;
    m_filterText = text;
    m_filterCount = m_store.count();
    m_filtered = std::make_unique<Graph<SomeCommits>>(m_graph->commits, m_store, found);
    m_filtered->layout.extend(static_cast<std::uint32_t>(found.size()));
    return true;
}

void GitBranchesModel::filterNewCommits()
{
    cmStringT text;
    {
        cmMutexLock hold(modelLock);
        if (!m_filtered || m_filterCount == m_store.count())
            return;
        text = m_filterText;
    }
    filter(text);
}
