#include "filewatcher/status/SVNStatusThread.h"

#include "common/CommandLine.h"
#include "common/cmDateTime.h"
#include "common/cmPath.h"
#include "filewatcher/status/SVNEntry.h"
#include "filewatcher/status/VCRecord.h"

#include <utility>

namespace {

constexpr std::uint32_t showUpdatesPaceMs = 60000;

/// A path as the client takes it. Of a path with an "@" it takes the text behind the last one for a revision.
cmStringT pathArgument(const cmStringT& path)
{
    cmStringT argument(cmWithoutTrailingSeparator(path));
    if (argument.view().find('@') != cmROStringT::npos)
        argument += '@';
    return inDoubleQuotes(argument);
}

bool tellsTheSame(const TXVCRECORD& a, const TXVCRECORD& b)
{
    return a.localStatus == b.localStatus && a.repositoryStatus == b.repositoryStatus && a.tool == b.tool;
}

}  // namespace

std::int32_t SVNStatusThread::processEntry(const WatchEntry& entry)
{
    const bool asksServer = showUpdates && !entry.contextFlag;
    const std::int32_t status = runAndParse(entry);
    // Without its server the client cuts its answer short; it can still tell what is modified here.
    return status == statusPassFailed && asksServer ? runAndParse(entry) : status;
}

std::int32_t SVNStatusThread::runAndParse(const WatchEntry& entry)
{
    cmStringT output;
    cmStringT errorOutput;
    const std::int32_t status = svnStatusForItem(entry, output, errorOutput);
    if (status != 0 || output.isNull())
        return status;
    return isStopping() ? statusStopRequested : parseSvnStatus(output, !errorOutput.isEmpty() && !entry.contextFlag);
}

cmROStringT SVNStatusThread::subcommand(const WatchEntry& item)
{
    const std::uint32_t now = cmTickCount();
    if (!showUpdates && (now < lastShowUpdatesTick || now - lastShowUpdatesTick >= showUpdatesPaceMs)) {
        lastShowUpdatesTick = 0;
        showUpdates = true;
    }
    if (item.contextFlag)
        return " info --non-interactive --xml ";
    if (!std::exchange(showUpdates, false))
        return " status --non-interactive --xml --verbose ";
    lastShowUpdatesTick = now;  // however it goes: a server that fails is not asked more often
    return " status --non-interactive --xml --show-updates --verbose ";
}

std::int32_t SVNStatusThread::svnStatusForItem(const WatchEntry& item, cmStringT& output, cmStringT& errorOutput)
{
    cmStringT command = quotedProgram();
    if (command.isEmpty())
        return 0;
    command += subcommand(item);
    if (!item.pathFlag && !item.contextFlag)
        command += "--non-recursive ";
    command += pathArgument(item.path);
    return runTool(command, spawnPlainCommand, "", output, errorOutput);
}

std::int32_t SVNStatusThread::parseSvnStatus(const cmStringT& output, bool complained)
{
    if (output.view().find("<!DOCTYPE") != cmROStringT::npos)  // the client writes none: entities of somebody else's
        return statusPassFailed;
    XMLDocument document(output);
    const cmArray<std::int32_t> nodes = document.isLoaded() ? document.select("/status/target/entry") : cmArray<std::int32_t>();
    if (!document.isLoaded() || (nodes.empty() && complained)) {  // a working copy has an entry for itself at least
        document.close();
        return statusPassFailed;
    }
    const bool serverAnswered = !document.select("/status/target/against").empty();
    bool changed = false;
    std::int32_t status = 0;
    for (const std::int32_t node : nodes) {
        if (isStopping()) {
            status = statusStopRequested;
            break;
        }
        const SVNEntry entry = readSvnEntry(document, node);
        if (!cmIsAbsolutePath(entry.path))  // as what was asked for: this is none of its files
            continue;
        const TXVCRECORD before = readVCRecord(entry.path);
        TXVCRECORD record = before;
        if (!applySvnEntry(entry, serverAnswered, record))
            continue;
        record.tool = tool.number;
        txVCSetRecord(tamarin::TMString(entry.path), record);
        changed |= !tellsTheSame(before, record);
    }
    document.close();
    if (changed)
        txVCStatusChanged();
    return status;
}
