#include "common/cmStringCatHelper.h"
#include "txhost/Commands.h"
#include "txhost/Console.h"
#include "txhost/JsonText.h"
#include "txhost/StatusPoll.h"
#include "txhost/WaitProgress.h"

#include <algorithm>
#include <optional>
#include <string>
#include <utility>

namespace {

constexpr int exitFailure = 1;
constexpr int exitModified = 3;
constexpr cmROStringT nothing =
    "nothing is modified (not looked at: what is only staged, added, deleted, in conflict or untracked)";

/// What all objects about a file or directory begin with.
Json about(const cmStringT& path, cmROStringT tool)
{
    Json object;
    addName(object, "path", path);
    object["tool"] = jsonString(tool);
    return object;
}

void printOutside(const WatchedDirectory& directory, bool json)
{
    if (json) {
        Json object = about(directory.path, directory.tool.name);
        object["outside"] = true;
        printJson(std::move(object));
        return;
    }
    console::printLine(cmStringT(cmCat(console::coloured(console::grey, "outside       ")) + console::printable(directory.path)));
}

void printFile(const FileStatus& file, bool json)
{
    if (json) {
        Json object = about(file.path, file.tool);
        addNames(object, "local", file.local);
        addNames(object, "repository", file.repository);
        printJson(std::move(object));
        return;
    }
    std::string words;
    for (const cmStringT& token : file.local) {
        words += words.empty() ? "" : ",";
        words += token.view();
    }
    if (!file.repository.empty())
        words += words.empty() ? "outdated" : ",outdated";
    words.resize(std::max<std::size_t>(words.size() + 1, 14), ' ');
    console::printLine(cmStringT(cmCat(console::coloured(console::yellow, words)) + console::printable(file.path)));
}

/// Prints what a status poll answers, and remembers what the exit code depends on.
class Report {
public:
    explicit Report(bool json) : m_json(json) {}

    void printPass(const PassAnswer& answer)
    {
        if (answer.isOutside)
            printOutside(answer.directory, m_json);
        m_isEmpty = m_isEmpty && !answer.isOutside;
        printFiles(answer.files);
        if (answer.failure)
            printFailure(*answer.failure, m_json);
        m_hasFailed = m_hasFailed || answer.failure;
    }
    /// A file that has become clean since another pass reported it cannot be taken back; nothing is said of it.
    void printFiles(const FileStatuses& files)
    {
        for (const auto& [key, file] : files) {
            if (file.isClean())
                continue;
            printFile(file, m_json);
            m_isModified = m_isModified || !file.local.empty();
            m_isEmpty = false;
        }
    }
    /// Ends the report of a poll that has answered. Returns the exit code.
    int end(const StatusOptions& wanted) const
    {
        if (m_hasFailed)
            return exitFailure;
        if (m_isEmpty && !m_json && console::isTerminal())
            console::printLine(nothing);
        return wanted.exitCode && m_isModified ? exitModified : 0;
    }

private:
    const bool m_json;
    bool m_hasFailed = false;
    bool m_isModified = false;
    bool m_isEmpty = true;
};

}  // namespace

int runStatus(const HostOptions& options, const std::vector<std::string>& named, const StatusOptions& wanted)
{
    const cmArray<WatchedDirectory> directories = watchedDirectories(named, options.tool);
    Host host(options);
    requireTools(host, directories);
    console::catchInterrupts();
    Report report(options.json);
    StatusListener listener;
    listener.passEnded = [&](const PassAnswer& answer) { report.printPass(answer); };
    listener.roundEnded = [&](const Tool&, const FileStatuses& files) { report.printFiles(files); };
    std::optional<WaitProgress> progress(std::in_place, "status");
    const StatusPoll* asked = nullptr;
    listener.passBegan = [&] { progress->tell(asked->awaited()); };
    StatusPoll poll(host, directories, listener);
    asked = &poll;
    for (const Tool* tool : poll.tools())
        poll.start(*tool);
    poll.runUntil([&] { return !poll.isWaiting() || console::wasInterrupted(); });
    progress.reset();
    if (!poll.isWaiting())
        return report.end(wanted);
    report.printFiles(poll.takeUnreported());
    console::printInterrupted(cmStringT(cmCat("no answer from ") + poll.awaited()));
    for (const WatchedDirectory* directory : poll.unanswered()) {
        if (options.json)
            printJson(failureJson({Failure::stopped, "interrupted", directory->path, directory->tool.name}));
    }
    return exitFailure;
}
