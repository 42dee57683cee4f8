#include "common/CommandLine.h"
#include "common/cmStringCatHelper.h"
#include "filewatcher/RegisteredFunctions.h"
#include "filewatcher/StatusCodes.h"
#include "filewatcher/git/GitCommand.h"
#include "filewatcher/git/GitQuery.h"
#include "filewatcher/git/query/GitCommitLookup.h"
#include "filewatcher/git/query/GitCommitTable.h"

std::int32_t gitGetCommitInfo(TXPSZ git, TXPSZ repository, TXPSZ hash, TXHREFVAR result)
{
    if (!txFeatureAvailable())
        return statusFeatureUnavailable;
    const cmStringT revision(hash);
    if (isGitOption(revision))
        return statusGitFailed;
    const cmStringT argument = revision.isEmpty() ? cmStringT("") : quoteArgument(revision);
    cmStringT output;
    const std::int32_t status = runGitQuery(cmStringT(cmCat(quotedGit(git)) + " --no-pager show --name-only -m \"--pretty=format:"
                                                      + gitCommitFormat + "\" " + argument),
                                            repository, output);
    GitCommitInfo commit;
    if (status == 0 && !output.isEmpty() && findModelCommit(revision, commit))
        fillCommitTable(result, commit, parseGitCommitText(output));
    return status;
}
