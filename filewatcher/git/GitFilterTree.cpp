#include "filewatcher/RegisteredFunctions.h"
#include "filewatcher/StatusCodes.h"
#include "filewatcher/git/BrowserState.h"
#include "filewatcher/git/GitBranchesModel.h"
#include "filewatcher/git/fillBranchTree.h"

std::int32_t gitFilterTree(TMStringConst text, TXHREFVAR)
{
    if (!txFeatureAvailable())
        return statusFeatureUnavailable;
    GitBranchesModel* const model = GitBranchesModel::instance(false);
    if (!model)
        return statusNoGitModel;
    BrowserState& state = browserState();
    state.killTimer();
    const cmArray<std::uint32_t> numbers = model->filter(text.getCMString());
    if (!numbers.empty()) {
        txTreeClear();
        state.cursor = {};
    }
    for (const std::uint32_t number : numbers)
        addBranchTreeRow(*model, number, state.cursor);
    if (!model->isFiltered())
        state.requestRefresh(state.refreshRequest);  // what has come since, and what is still to come
    return 0;
}
