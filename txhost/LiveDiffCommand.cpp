#include "txhost/LiveDiffCommand.h"

#include "common/CommandQuoting.h"
#include "common/cmStringCatHelper.h"
#include "common/cmSystemPath.h"
#include "txapi/txapi.h"
#include "txhost/Commands.h"
#include "txhost/Console.h"
#include "txhost/FileDates.h"
#include "txhost/InterruptWatch.h"
#include "txhost/JsonText.h"

#include <filesystem>

namespace {

/// A name in Perforce's syntax, in which these characters have a meaning of their own.
cmStringT perforceName(cmROStringT name)
{
    cmStringT written("");
    for (const char c : name) {
        switch (c) {
        case '@': written += "%40"; break;
        case '#': written += "%23"; break;
        case '%': written += "%25"; break;
        case '*': written += "%2A"; break;
        default: written += c;
        }
    }
    return written;
}

/// The command that writes the revision of `file` from which the working copy was made.
cmStringT committedRevisionCommand(const Host& host, const Tool& tool, const std::filesystem::path& file)
{
    const cmStringT program = cmCat("\"") + host.programPath(tool) + "\" ";
    const cmStringT name = cmPathText(file.filename());
    if (tool.number == svnTool.number)  // svn takes the text after the last @ for a revision
        return cmCat(program) + "cat --non-interactive -r BASE -- " + quoteArgument(cmStringT(cmCat(name) + "@"));
    if (tool.number == p4Tool.number)
        return cmCat(program) + "print -q " + quoteArgument(cmStringT(cmCat(perforceName(name)) + "#have"));
    return cmCat(program) + "--no-pager show --no-textconv " + quoteArgument(cmStringT(cmCat("HEAD:./") + name));
}

}  // namespace

LiveDiffFile fetchLiveDiff(Host& host, const cmStringT& file, bool immediate, const std::string& command)
{
    const std::filesystem::path path = cmSystemPath(file);
    const cmStringT directory = cmPathText(path.parent_path());
    cmStringT commandLine(command);
    if (command.empty()) {
        const Tool& tool = findTool(directory);
        host.requireTool(tool);
        commandLine = committedRevisionCommand(host, tool, path);
    }
    const TXHVAR cache = txHvarAlloc();
    const std::int32_t started = host.call(immediate ? "_SVCLiveDiffGetVCFileImmediate" : "_SVCLiveDiffGetVCFile",
                                           {"", commandLine, file, CallArgument::variable(cache), directory});
    LiveDiffFile fetched;
    txHvarGetString(cache, fetched.cacheFile);
    txHvarFree(cache);
    if (started > 0)
        throw HostError("the module could not start its thread for live diff");
    fetched.status = started;
    const auto ended = [&] {
        fetched.status = host.call("_SVCLiveDiffHaveVCFile", {fetched.cacheFile});
        return fetched.status != 0 || console::wasInterrupted();
    };
    if (started == 0)
        host.editor().runUntil(ended, -1);
    fetched.reason = host.editor().takeQueryError();
    return fetched;
}

int runLiveDiff(const HostOptions& options, const std::string& named, const std::string& command, bool background)
{
    const cmStringT path = absolutePaths({named}).front();
    Host host(options);
    if (host.directory().isNull())
        throw HostError("there is no folder of yours for the revision; name one with --cache");
    const LiveDiffFile fetched = [&] {
        const InterruptWatch interrupts;
        const LiveDiffFile file = fetchLiveDiff(host, path, !background, command);
        interrupts.check();
        return file;
    }();
    if (options.json)
        console::printLine(
            jsonText({{"path", jsonString(path)}, {"cache", jsonString(fetched.cacheFile)}, {"status", fetched.status}}));
    if (fetched.status == 1 && !options.json)
        console::printLine(console::printable(fetched.cacheFile));
    if (fetched.status != 1)
        console::printError(fetched.reason.isNull() ? failureText(path, fetched.status)
                                                    : cmStringT(cmCat(path) + ": " + fetched.reason));
    return fetched.status == 1 ? 0 : 1;
}
