#include "editor/Editor.h"
#include "filewatcher/RegisteredFunctions.h"
#include "filewatcher/StatusCodes.h"
#include "filewatcher/git/commits/GitCommitInfo.h"
#include "filewatcher/git/graph/GraphRow.h"
#include "tests/host/loadModule.h"
#include "txapi/VersionControlTools.h"

#include <cstdio>

/// host MODULE: asks the module, through the stand-in editor, with the feature gate closed.
int main(int, char** words)
{
    Editor editor;
    editor.setFeatureAvailable(false);
    if (!loadModule(words[1]))
        return 1;
    const CallResult result = editor.call("filewatcherAddPath", {"folder", txVCToolGit.number, 0});
    if (result.number == statusFeatureUnavailable)
        std::puts("the module answers");
    editor.call("filewatcher_stop_async_work", {});
}
