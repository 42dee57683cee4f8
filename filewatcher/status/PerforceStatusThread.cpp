#include "filewatcher/status/PerforceStatusThread.h"

#include "common/cmFile.h"
#include "common/cmStringCatHelper.h"
#include "filewatcher/status/PerforceOutput.h"
#include "filewatcher/status/VCRecord.h"
#include "filewatcher/status/WatchedSpelling.h"

#include <utility>

std::int32_t PerforceStatusThread::perforceStatusForPath(const cmStringT& path)
{
    cmStringT form;
    cmStringT opened;
    cmStringT differing;
    cmStringT outdated;
    const std::pair<cmROStringT, cmStringT*> commands[] = {
        {" client -o", &form}, {" -ztag opened", &opened}, {" diff -sa", &differing}, {" sync -n", &outdated}};
    for (const auto& [arguments, output] : commands) {
        const std::int32_t status = runClient(arguments, path, *output);
        if (status != 0)
            return status;
        if (isStopping())
            return statusStopRequested;
    }
    WatchedSpelling spelling(path, cmRealPath(path));
    const PerforceClient client = parsePerforceClient(form, spelling);
    if (client.name.isNull())
        return quotedProgram().isEmpty() ? 0 : failPass("the client's form names no workspace");
    if (!client.root.isEmpty() && !spelling.isBelow(client.root))
        spelling.addSpelling(client.root, cmRealPath(client.root));
    const auto mark = [&](const cmStringT& file, cmROStringT token, cmStringT TXVCRECORD::*list) {
        if (markFile(spelling.respell(file), tool().number, token, list))
            noteChange();
    };
    const cmArray<PerforceOpenedFile> openedFiles = parsePerforceOpened(opened, client);
    for (const PerforceOpenedFile& file : openedFiles)
        mark(file.path, "edit", &TXVCRECORD::localStatus);
    for (const cmStringT& file : parsePerforceDiff(differing))
        mark(file, "mod", &TXVCRECORD::localStatus);
    for (const cmStringT& file : parsePerforceSync(outdated, openedFiles))
        mark(file, "mod", &TXVCRECORD::repositoryStatus);
    return 0;
}

std::int32_t PerforceStatusThread::runClient(cmROStringT arguments, const cmStringT& path, cmStringT& output)
{
    const cmStringT program = quotedProgram();
    if (program.isEmpty())
        return 0;
    cmStringT errorOutput;
    const std::int32_t status = runTool(cmStringT(cmCat(program) + arguments), spawnPlainCommand, path, output, errorOutput);
    return status == 0 && !isPerforceNothingToList(errorOutput) ? statusPassFailed : status;
}
