#include "filewatcher/status/SVNStatusThread.h"

#include "common/CommandQuoting.h"
#include "common/cmPath.h"
#include "filewatcher/bridge/ToolErrors.h"
#include "filewatcher/bridge/XMLDocument.h"
#include "filewatcher/status/SVNEntry.h"
#include "filewatcher/status/VCRecord.h"

#include <utility>

namespace {

constexpr std::uint32_t showUpdatesPaceMs = 60000;

/// The path as a quoted argument. The client reads what follows the last "@" of a path as a revision, so a path that holds one
/// gets an empty revision at its end.
cmStringT pathArgument(const cmStringT& path)
{
    cmStringT argument(cmWithoutTrailingSeparator(path));
    if (argument.view().find('@') != cmROStringT::npos)
        argument += '@';
    return inDoubleQuotes(argument);
}

bool haveSameStatus(const TXVCRECORD& a, const TXVCRECORD& b)
{
    return a.localStatus == b.localStatus && a.repositoryStatus == b.repositoryStatus && a.tool == b.tool;
}

}  // namespace

std::int32_t SVNStatusThread::processEntry(const WatchEntry& entry)
{
    const bool asksServer = showUpdates && !entry.contextFlag;
    const std::int32_t status = runAndParse(entry);
    // When the server does not answer, the output breaks off. The local command needs no server.
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
    const std::uint32_t now = m_clock();
    if (!showUpdates && (now < lastShowUpdatesTick || now - lastShowUpdatesTick >= showUpdatesPaceMs)) {
        lastShowUpdatesTick = 0;
        showUpdates = true;
    }
    if (item.contextFlag)
        return " info --non-interactive --xml ";
    if (!std::exchange(showUpdates, false))
        return " status --non-interactive --xml --verbose ";
    lastShowUpdatesTick = now;  // set before the run: a server that fails is not asked more often
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
    const std::int32_t status = runTool(command, spawnPlainCommand, "", output, errorOutput);
    return status == 0 && hasSvnError(errorOutput) ? statusPassFailed : status;
}

std::int32_t SVNStatusThread::parseSvnStatus(const cmStringT& output, bool hasErrors)
{
    if (output.view().find("<!DOCTYPE") != cmROStringT::npos)  // the client writes no entities of its own
        return failPass("the client's answer declares a document type");
    XMLDocument document(output);
    const cmArray<std::int32_t> nodes = document.isLoaded() ? document.select("/status/target/entry") : cmArray<std::int32_t>();
    if (!document.isLoaded() || (nodes.empty() && hasErrors)) {  // a working copy has at least one entry, for itself
        const bool whole = document.isLoaded();
        document.close();
        // A whole answer without an entry comes with a warning that says why, such as "is not a working copy".
        return whole ? statusPassFailed : failPass("the client's answer is incomplete");
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
        if (!cmIsAbsolutePath(entry.path))  // the watched path is absolute, so are those of its files
            continue;
        const TXVCRECORD before = readVCRecord(entry.path);
        TXVCRECORD record = before;
        if (!applySvnEntry(entry, serverAnswered, record))
            continue;
        record.tool = tool().number;
        txVCSetRecord(tamarin::TMString(entry.path), record);
        changed |= !haveSameStatus(before, record);
    }
    document.close();
    if (changed)
        txVCStatusChanged();
    return status;
}
