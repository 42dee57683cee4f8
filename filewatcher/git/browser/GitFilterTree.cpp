#include "filewatcher/RegisteredFunctions.h"
#include "filewatcher/StatusCodes.h"
#include "filewatcher/git/browser/BrowserState.h"
#include "filewatcher/git/browser/GitBranchesModel.h"
#include "filewatcher/git/browser/fillBranchTree.h"

std::int32_t gitFilterTree(TMStringConst text, TXHREFVAR)
{
    if (!txFeatureAvailable())
        return statusFeatureUnavailable;
    GitBranchesModel* const model = GitBranchesModel::instance(false);
    if (!model)
        return statusNoGitModel;
    BrowserState& state = browserState();
    state.killTimer();
    if (model->filter(text.getCMString())) {
        txTreeClear();
        state.cursor = {};
        addBranchTreeSlice(*model, state.cursor);
    }
    // What one slice did not hold, what has come since, and what is still to come.
    state.requestRefresh(state.refreshRequest);
    return 0;
}
