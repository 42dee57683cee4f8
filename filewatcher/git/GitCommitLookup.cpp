#include "filewatcher/git/GitCommitLookup.h"

#include "filewatcher/git/GitBranchesModel.h"

bool findModelCommit(cmROStringT hash, GitCommitInfo& commit)
{
    GitBranchesModel* model = GitBranchesModel::instance(false);
    const std::int64_t number = model ? model->findCommit(hash) : -1;
    return number >= 0 && model->copyCommit(number, commit) == 0;
}
