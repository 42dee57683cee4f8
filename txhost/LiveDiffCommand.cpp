#include "txhost/LiveDiffCommand.h"

#include "common/CommandQuoting.h"
#include "common/CommandRunner.h"
#include "common/cmFile.h"
#include "common/cmStringCatHelper.h"
#include "common/cmSystemPath.h"
#include "txapi/txapi.h"
#include "txhost/Commands.h"
#include "txhost/Console.h"
#include "txhost/FileDates.h"
#include "txhost/InterruptWatch.h"
#include "txhost/JsonText.h"
#include "txhost/WaitProgress.h"

#include <filesystem>
#include <utility>

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

/// What a command says that writes nothing to its output. Null when that is nothing or a warning: then the revision is empty. The
/// module has run the command already and judged it by its output, without the exit code.
cmStringT complaintOf(const cmStringT& commandLine, const cmStringT& directory)
{
    bool anyOutput = false;
    const CaptureResult result =
        captureCommand(commandLine, spawnScannedCommand, directory, {}, [&anyOutput](cmROStringT) { anyOutput = true; });
    cmROStringT words = result.errorOutput;
    const cmROStringT first = cmWithoutLineEnd(cmTakeUntil(words, '\n'));
    return anyOutput || first.empty() || first.starts_with("warning:") ? cmStringT() : cmStringT(first);
}

/// A failed fetch in words: the module's own reason, or what its code means here.
cmStringT reasonOf(Host& host, const cmStringT& cacheFile)
{
    const cmStringT reason = host.editor().takeQueryError();
    if (reason.isNull() && cacheFile.isEmpty())
        return cmCat("no folder for the revision can be made below ") + host.directory();
    return reason;
}

}  // namespace

LiveDiffFile fetchLiveDiff(Host& host, const cmStringT& file, bool immediate, const std::string& command)
{
    if (cmIsDirectory(file))
        throw HostError(file, "is a directory");
    const std::filesystem::path path = cmSystemPath(file);
    const cmStringT directory = cmPathText(path.parent_path());
    cmStringT commandLine(command);
    cmROStringT toolName;
    if (command.empty()) {
        const Tool& tool = findTool(directory);
        toolName = tool.name;
        host.requireTool(tool);
        commandLine = committedRevisionCommand(host, tool, path);
    }
    const TXHVAR cache = txHvarAlloc();
    std::int32_t status = host.call(immediate ? "_SVCLiveDiffGetVCFileImmediate" : "_SVCLiveDiffGetVCFile",
                                    {"", commandLine, file, CallArgument::variable(cache), directory});
    LiveDiffFile fetched;
    txHvarGetString(cache, fetched.cacheFile);
    txHvarFree(cache);
    if (status > 0)
        throw HostError(file, "the module could not start its thread for live diff");
    const auto ended = [&] {
        status = host.call("_SVCLiveDiffHaveVCFile", {fetched.cacheFile});
        return status != 0 || console::wasInterrupted();
    };
    if (status == 0)
        host.editor().runUntil(ended, -1);
    if (status == 0)
        fetched.failure = {Failure::stopped, "interrupted", file, toolName};
    else if (status < 0)
        fetched.failure = failureOf(status, reasonOf(host, fetched.cacheFile), file, toolName);
    else if (cmReadFileItem(fetched.cacheFile).size > 0)
        return fetched;
    else if (const cmStringT complaint = complaintOf(commandLine, directory); !complaint.isNull())
        fetched.failure = {Failure::own, complaint, file, toolName};
    return fetched;
}

int runLiveDiff(const HostOptions& options, const std::string& named, const std::string& command, bool background)
{
    const cmStringT path = absolutePaths({named}).front();
    Host host(options);
    if (host.directory().isNull())
        throw HostError("there is no folder of yours for the revision; name one with --cache");
    const LiveDiffFile fetched = [&] {
        const InterruptWatch interrupts(path);
        const WaitProgress progress(cmCat("the committed revision of ") + path);
        const LiveDiffFile file = fetchLiveDiff(host, path, !background, command);
        interrupts.check();
        return file;
    }();
    if (fetched.failure) {
        printFailure(*fetched.failure, options.json);
        return 1;
    }
    if (!options.json) {
        console::printLine(console::printable(fetched.cacheFile));
        return 0;
    }
    Json object;
    addName(object, "path", path);
    addName(object, "cache", fetched.cacheFile);
    printJson(std::move(object));
    return 0;
}
