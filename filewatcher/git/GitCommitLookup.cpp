#include "filewatcher/git/GitCommitLookup.h"

#include "filewatcher/git/GitBranchesModel.h"

bool findModelCommit(cmROStringT hash, GitCommitInfo& commit)
{
    GitBranchesModel* model = GitBranchesModel::instance(false);
    return model && model->findCommit(hash, commit);
}
