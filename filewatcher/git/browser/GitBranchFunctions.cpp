#include "common/ChildProcess.h"
#include "filewatcher/RegisteredFunctions.h"
#include "filewatcher/StatusCodes.h"
#include "filewatcher/bridge/EditorSettings.h"
#include "filewatcher/git/browser/BrowserState.h"
#include "filewatcher/git/browser/GitBranchesModel.h"
#include "filewatcher/git/browser/GitBrowser.h"
#include "filewatcher/git/browser/GitCallbacks.h"

#include <algorithm>
#include <utility>

namespace {

constexpr std::int32_t firstTickMs = 100;
constexpr std::int32_t usualLoadLimit = 10;
constexpr std::int32_t forceArgument = 3;
constexpr std::int32_t restrictionArgument = 4;

using Buffer = char[1024];

/// What fits of `text`.
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

/// The optional arguments of _GitGetBranchInfo.
bool isForced()
{
    return txArgumentCount() >= forceArgument && txHvarGetInt(txArgument(forceArgument)) != 0;
}

cmStringT logRestriction()
{
    cmStringT restriction("");
    if (txArgumentCount() >= restrictionArgument)
        txHvarGetString(txArgument(restrictionArgument), restriction);
    return restriction;
}

bool shallStart(GitBranchesModel& model, bool newRepository, std::int32_t loadLimit)
{
    if (newRepository)
        return true;
    if (!isForced())
        return loadLimit != model.loadLimit();
    return !model.isLoaded();  // nor does it go on: clearing ended it
}

/// 0, or the status of the thread that did not start.
std::int32_t startLoad(GitBranchesModel& model, const GitLoadRequest& request, bool newRepository)
{
    BrowserState& state = browserState();
    model.join();  // it has ended, or was told to: then it does so at once
    model.init(request);
    state.cursor = {};
    if (newRepository)
        txTreeSetModel(&model);
    if (newRepository || txTreeRowCount() > 0)  // rows of another load would pass for the first of this one
        txTreeClear();
    int status = request.logThread->start();
    if (status == 0)
        status = model.start();
    if (status != 0) {  // nobody would take what the log delivers
        model.setLogThread(nullptr);
        state.replaceLog(nullptr);
    }
    return status;
}

void closeBrowser()
{
    BrowserState& state = browserState();
    state.killTimer();
    GitBranchesModel* const model = GitBranchesModel::instance(false);
    if (model) {
        model->requestStop();
        model->join();
        model->clearModel();
    }
    state.stopLogs();
}

}  // namespace

std::int32_t gitGetBranchInfo(TXPSZ repository, TXPSZ git)
{
    BrowserState& state = browserState();
    GitLoadRequest request{git, repository, loadLimitSetting(), logRestriction(), nullptr};
    registerGitCallbacks();
    cmStringT lastRepository;
    txGetStringProperty(txPropertyBrowserRepository, lastRepository);
    const bool newRepository = !GitBranchesModel::instance(false) || lastRepository != request.path;
    const std::int32_t windowId = txGetIntProperty(txPropertyBrowserWindow);
    request.logThread = std::make_shared<GitRunLogThread>(request.gitExePath, request.path, request.logRestriction);
    state.replaceLog(request.logThread);

    GitBranchesModel& model = *GitBranchesModel::instance(true);
    model.requestStop();  // clearing ends a load
    if (newRepository)
        state.killTimer();
    model.clearModel();
    std::int32_t result = 0;
    const bool started = shallStart(model, newRepository, request.loadLimit);
    if (started)
        result = startLoad(model, request, newRepository);
    txSetStringProperty(txPropertyBrowserRepository, request.path);
    if ((started && result == 0) || model.isRunning()) {
        if (!state.isTimerArmed()) {
            state.refreshRequest = {request.path, request.gitExePath, windowId};
            state.armTimer(firstTickMs);
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
