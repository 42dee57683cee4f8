#include "common/ChildProcess.h"
#include "filewatcher/RegisteredFunctions.h"
#include "filewatcher/StatusCodes.h"
#include "filewatcher/bridge/EditorSettings.h"
#include "filewatcher/git/browser/BranchTree.h"
#include "filewatcher/git/browser/GitBranchesModel.h"
#include "filewatcher/git/browser/GitBrowser.h"
#include "filewatcher/git/browser/GitCallbacks.h"
#include "filewatcher/git/browser/LogThreads.h"

#include <memory>

namespace {

constexpr std::int32_t firstTickMs = 100;
constexpr std::int32_t usualLoadLimit = 10;
constexpr std::int32_t forceArgument = 3;
constexpr std::int32_t restrictionArgument = 4;
constexpr std::int32_t nothingFound = 1;

using Buffer = char[1024];

/// Copies as much of `text` as fits, and a NUL.
TXPSZ toBuffer(cmROStringT text, Buffer& buffer)
{
    const std::size_t length = text.copy(buffer, sizeof buffer - 1);
    buffer[length] = '\0';
    return buffer;
}

std::int32_t loadLimitSetting()
{
    const TXHVAR variable = findEditorVariable("def_git_browser_single_load_limit");
    cmStringT value;
    if (!variable || !txHvarGetString(variable, value) || value.isEmpty())
        return usualLoadLimit;
    return txHvarGetInt(variable);
}

/// The optional argument 3 of _GitGetBranchInfo.
bool isForced()
{
    const TXHVAR force = txArgumentCount() >= forceArgument ? txArgument(forceArgument) : 0;
    return force && txHvarGetInt(force) != 0;
}

/// The optional argument 4 of _GitGetBranchInfo.
cmStringT logRestriction()
{
    cmStringT restriction("");
    if (const TXHVAR given = txArgumentCount() >= restrictionArgument ? txArgument(restrictionArgument) : 0)
        txHvarGetString(given, restriction);
    return restriction;
}

bool shouldStart(GitBranchesModel& model, bool newRepository, std::int32_t loadLimit)
{
    if (newRepository)
        return true;
    if (!isForced())
        return loadLimit != model.loadLimit();
    return !model.isLoaded();  // a load that ran has been asked to stop, so a forced call need not look for one
}

/// Starts the log thread and the model's thread. Returns 0 or the status of the one that did not start.
std::int32_t startLoad(GitBranchesModel& model, const GitLoadRequest& request, bool newRepository)
{
    model.join();  // short: the thread has ended or has been asked to
    model.init(request);
    branchTree().restart();
    if (newRepository)
        txTreeSetModel(&model);
    if (newRepository || txTreeRowCount() > 0)  // rows of an earlier load would be taken for this one's
        txTreeClear();
    int status = request.logThread->start();
    if (status == 0)
        status = model.start();
    if (status != 0) {  // without the model nobody takes the log's output
        model.setLogThread(nullptr);
        logThreads().replace(nullptr);
    }
    return status;
}

void closeBrowser()
{
    branchTree().killTimer();
    if (GitBranchesModel* const model = GitBranchesModel::instance(false)) {
        model->requestStop();
        model->join();
        model->clearModel();
    }
    logThreads().stopAll();
}

}  // namespace

std::int32_t gitGetBranchInfo(TXPSZ repository, TXPSZ git)
{
    BranchTree& tree = branchTree();
    GitLoadRequest request{git, repository, loadLimitSetting(), logRestriction(), nullptr};
    registerGitCallbacks();
    cmStringT lastRepository;
    txGetStringProperty(txPropertyBrowserRepository, lastRepository);
    const bool newRepository = !GitBranchesModel::instance(false) || lastRepository != request.path;
    const std::int32_t windowId = txGetIntProperty(txPropertyBrowserWindow);
    request.logThread = std::make_shared<GitRunLogThread>(request.gitExePath, request.path, request.logRestriction);
    logThreads().replace(request.logThread);

    GitBranchesModel& model = *GitBranchesModel::instance(true);
    model.requestStop();  // before clearing, so that a load that runs adds nothing to the cleared model
    if (newRepository)
        tree.killTimer();
    model.clearModel();
    std::int32_t result = 0;
    const bool started = shouldStart(model, newRepository, request.loadLimit);
    if (started)
        result = startLoad(model, request, newRepository);
    txSetStringProperty(txPropertyBrowserRepository, request.path);
    if ((started && result == 0) || model.isRunning()) {
        if (!tree.isTimerArmed()) {
            tree.setRefreshRequest({request.path, request.gitExePath, windowId});
            tree.armTimer(firstTickMs);
        }
        result = 0;
    }
    return result;
}

void gitBranchClose()
{
    if (txFeatureAvailable())
        closeBrowser();
}

void stopGitBrowser()
{
    closeBrowser();
    if (!GitBranchesModel::instance(false))
        return;
    txTreeSetModel(nullptr);
    withdrawGitCallbacks();
    GitBranchesModel::destroyInstance();
    reapEndedChildren();
}

std::int32_t gitGetBranchInfoRunning()
{
    GitBranchesModel* const model = GitBranchesModel::instance(false);
    return model && (model->isRunning() || model->isLogRunning()) ? 1 : 0;
}

std::int32_t gitGettingInfo()
{
    GitBranchesModel* const model = GitBranchesModel::instance(false);
    return model && model->isRunning() ? 1 : 0;
}

TXPSZ gitGetBranchName(std::int32_t number)
{
    static Buffer buffer;
    GitBranchesModel* const model = GitBranchesModel::instance(false);
    cmStringT name;
    return toBuffer(model && model->getBranchName(number, name) ? name.view() : "Error", buffer);
}

TXPSZ gitGetBranchHash(std::int32_t number)
{
    static Buffer buffer;
    GitBranchesModel* const model = GitBranchesModel::instance(false);
    return toBuffer(model ? model->branchHash(number) : cmStringT(""), buffer);
}

TXPSZ gitCurBranchEndHash()
{
    static Buffer buffer;
    GitBranchesModel* const model = GitBranchesModel::instance(false);
    return toBuffer(model ? model->currentBranchEndHash() : cmStringT(""), buffer);
}

std::int32_t gitFilterTree(TMStringConst text, TXHREFVAR)
{
    if (!txFeatureAvailable())
        return statusFeatureUnavailable;
    GitBranchesModel* const model = GitBranchesModel::instance(false);
    if (!model)
        return statusNoGitModel;
    BranchTree& tree = branchTree();
    tree.killTimer();
    const bool found = model->filter(text.getCMString());
    if (found) {
        txTreeClear();
        tree.restart();
        tree.addSlice(*model);
    }
    // The timer adds what this slice left out, and the matching commits that the load still publishes.
    tree.requestRefresh(tree.refreshRequest());
    return found ? 0 : nothingFound;
}
