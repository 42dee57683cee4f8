#include "txhost/LiveDiffCommand.h"

#include "common/CommandQuoting.h"
#include "common/CommandRunner.h"
#include "common/cmFile.h"
#include "common/cmPath.h"
#include "common/cmStringCatHelper.h"
#include "common/cmSystemPath.h"
#include "txapi/txapi.h"
#include "txhost/Browser.h"
#include "txhost/Commands.h"
#include "txhost/Console.h"
#include "txhost/FileDates.h"
#include "txhost/InterruptWatch.h"
#include "txhost/JsonText.h"
#include "txhost/WaitProgress.h"

#include <filesystem>
#include <string>
#include <system_error>
#include <utility>

namespace fs = std::filesystem;

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

/// Why a command that writes nothing to its output has failed: what it says, unless that is a warning, or its exit code. Null
/// when the revision is empty. The module has run the command already and judged it by its output, without the exit code.
cmStringT complaintOf(const cmStringT& commandLine, const cmStringT& directory)
{
    bool anyOutput = false;
    const CaptureResult result =
        captureCommand(commandLine, spawnScannedCommand, directory, {}, [&anyOutput](cmROStringT) { anyOutput = true; });
    cmROStringT words = result.errorOutput;
    const cmROStringT first = cmWithoutLineEnd(cmTakeUntil(words, '\n'));
    if (result.status != 0 || anyOutput)
        return result.failure;
    if (result.exitCode != 0 && first.empty())
        return cmCat("the command has written nothing and ended with ") + std::to_string(result.exitCode);
    return result.exitCode == 0 && (first.empty() || first.starts_with("warning:")) ? cmStringT() : cmStringT(first);
}

/// Gives a file a second name for a while, so that it can be put back into the place of another that it was replaced by.
class KeptFile {
public:
    /// `name` is the second one, in the same file system. Nothing happens when there is no such file.
    KeptFile(const cmStringT& path, const cmStringT& name) : m_path(cmSystemPath(path)), m_kept(cmSystemPath(name))
    {
        fs::remove(m_kept, m_ignored);  // of a program that was killed
        std::error_code noLink;
        fs::create_hard_link(m_path, m_kept, noLink);
        m_isKept = !noLink || fs::copy_file(m_path, m_kept, m_ignored);
    }
    ~KeptFile() { fs::remove(m_kept, m_ignored); }
    KeptFile(const KeptFile&) = delete;
    KeptFile& operator=(const KeptFile&) = delete;

    /// Puts it back; where there was none, none is left.
    void restore()
    {
        if (m_isKept)
            fs::rename(m_kept, m_path, m_ignored);
        else
            fs::remove(m_path, m_ignored);
    }

private:
    std::error_code m_ignored;
    const fs::path m_path;
    const fs::path m_kept;
    bool m_isKept = false;
};

/// A failed fetch in words: the module's own reason, or what its code means here.
cmStringT reasonOf(Host& host, const cmStringT& cacheFile)
{
    const cmStringT reason = host.editor().takeQueryError();
    if (reason.isNull() && cacheFile.isEmpty())
        return cmCat("no folder for the revision can be made below ") + host.directory();
    return reason;
}

constexpr cmROStringT immediately = "_SVCLiveDiffGetVCFileImmediate";

/// What the module answers when it is told to fetch.
struct Call {
    std::int32_t status;
    cmStringT cacheFile;
};

Call callModule(Host& host, cmROStringT function, const cmStringT& commandLine, const cmStringT& file, const cmStringT& directory)
{
    const TXHVAR cache = txHvarAlloc();
    Call call{host.call(function, {"", commandLine, file, CallArgument::variable(cache), directory}), {}};
    txHvarGetString(cache, call.cacheFile);
    txHvarFree(cache);
    return call;
}

/// Waits for the end of the fetch into the cache file. Returns its status; 0 after an interrupt.
std::int32_t waitFor(Host& host, const cmStringT& cacheFile)
{
    std::int32_t status = 0;
    const auto ended = [&] {
        status = host.call("_SVCLiveDiffHaveVCFile", {cacheFile});
        return status != 0 || console::wasInterrupted();
    };
    host.editor().runUntil(ended, -1);
    return status;
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
    // A command that is none makes the module name the cache file and leave it alone. It would spoil the answer of a fetch in the
    // background.
    const cmStringT older = immediate ? callModule(host, immediately, "", file, directory).cacheFile : cmStringT();
    host.editor().takeQueryError();
    KeptFile before(older, cmJoinPath(host.directory(), "kept-" + std::to_string(currentThreadNumber())));
    const Call call = callModule(host, immediate ? immediately : "_SVCLiveDiffGetVCFile", commandLine, file, directory);
    if (call.status > 0)
        throw HostError(file, "the module could not start its thread for live diff");
    LiveDiffFile fetched{call.cacheFile, {}};
    const std::int32_t status = call.status == 0 ? waitFor(host, call.cacheFile) : call.status;
    if (status == 0)
        fetched.failure = {Failure::stopped, "interrupted", file, toolName};
    else if (status < 0)
        fetched.failure = failureOf(status, reasonOf(host, call.cacheFile), file, call.cacheFile.isEmpty() ? "" : toolName);
    else if (cmReadFileItem(call.cacheFile).size > 0)
        return fetched;
    else if (const cmStringT complaint = complaintOf(commandLine, directory); !complaint.isNull())
        fetched.failure = {Failure::own, complaint, file, toolName};
    else if (toolName == gitTool.name)
        fetched.failure = suspectSilence(host, directory);
    if (status > 0 && fetched.failure)
        before.restore();
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
