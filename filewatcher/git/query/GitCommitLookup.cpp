#include "filewatcher/git/query/GitCommitLookup.h"

#include "filewatcher/git/browser/GitBranchesModel.h"

bool findModelCommit(cmROStringT hash, GitCommitInfo& commit)
{
    GitBranchesModel* model = GitBranchesModel::instance(false);
    return model && model->findCommit(hash, commit);
}
