#include "common/cmStringCatHelper.h"
#include "txhost/Commands.h"
#include "txhost/Console.h"
#include "txhost/JsonText.h"
#include "txhost/RepositorySearch.h"
#include "txhost/StatusPoll.h"
#include "txhost/WaitProgress.h"

#include <algorithm>
#include <optional>
#include <string>
#include <utility>

namespace {

constexpr int exitFailure = 1;
constexpr int exitModified = 3;
constexpr cmROStringT notLookedAt = "(not looked at: what is only staged, added, deleted, in conflict or untracked)";

/// What all objects about a file or directory begin with.
Json about(const cmStringT& path, cmROStringT tool)
{
    Json object;
    addName(object, "path", path);
    object["tool"] = jsonString(tool);
    return object;
}

/// Prints what is true of a whole directory: "outside" or "clean".
void printDirectory(const WatchedDirectory& directory, const std::string& what, bool json)
{
    if (json) {
        Json object = about(directory.path, directory.tool.name);
        object[what] = true;
        printJson(std::move(object));
        return;
    }
    const std::string padded = what + std::string(14 - what.size(), ' ');
    console::printLine(cmStringT(cmCat(console::coloured(console::grey, padded)) + console::printable(directory.path)));
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
    Report(bool json, const StatusOptions& wanted) : m_json(json), m_wanted(wanted) {}

    void printPass(const PassAnswer& answer)
    {
        const bool isClean = printFiles(answer.files) == 0 && !answer.isOutside && !answer.failure;
        if (answer.isOutside || (isClean && m_wanted.recurse)) {
            printDirectory(answer.directory, answer.isOutside ? "outside" : "clean", m_json);
            m_isEmpty = false;
            m_hasClean = m_hasClean || isClean;
        }
        if (answer.failure)
            fail(*answer.failure);
    }
    void fail(const Failure& failure)
    {
        printFailure(failure, m_json);
        m_hasFailed = true;
    }
    /// Returns how many were printed. A file that has become clean since another pass reported it cannot be taken back; nothing
    /// is said of it.
    int printFiles(const FileStatuses& files)
    {
        int printed = 0;
        for (const auto& [key, file] : files) {
            if (file.isClean())
                continue;
            printFile(file, m_json);
            m_isModified = m_isModified || !file.local.empty();
            m_isEmpty = false;
            ++printed;
        }
        return printed;
    }
    /// Ends the report of a poll that has answered. Returns the exit code.
    int end() const
    {
        if ((m_hasClean || (m_isEmpty && !m_hasFailed)) && !m_json && console::isTerminal())
            console::printLine(cmStringT(cmCat(m_isEmpty ? "nothing is modified " : "") + notLookedAt));
        if (m_hasFailed)
            return exitFailure;
        return m_wanted.exitCode && m_isModified ? exitModified : 0;
    }

private:
    const bool m_json;
    const StatusOptions& m_wanted;
    bool m_hasFailed = false;
    bool m_isModified = false;
    bool m_isEmpty = true;
    bool m_hasClean = false;  ///< a directory was called clean
};

/// The working copies that --recurse finds.
cmArray<WatchedDirectory> foundBelow(const cmArray<WatchedDirectory>& directories, const std::string& tool, Report& report)
{
    const WaitProgress progress("looking for repositories");
    const FoundRepositories found = findRepositories(directories, tool);
    for (const Failure& failure : found.failures)
        report.fail(failure);
    return found.repositories;
}

}  // namespace

int runStatus(const HostOptions& options, const std::vector<std::string>& named, const StatusOptions& wanted)
{
    Host host(options);
    console::catchInterrupts();
    Report report(options.json, wanted);
    const auto fail = [&report](const Failure& failure) { report.fail(failure); };
    cmArray<WatchedDirectory> directories = watchedDirectories(named, options.tool, fail);
    if (wanted.recurse)
        directories = foundBelow(directories, options.tool, report);
    directories = withTheirTools(host, directories, fail);
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
        return report.end();
    report.printFiles(poll.takeUnreported());
    console::printInterrupted(cmStringT(cmCat("no answer from ") + poll.awaited()));
    for (const WatchedDirectory* directory : poll.unanswered()) {
        if (options.json)
            printJson(failureJson({Failure::stopped, "interrupted", directory->path, directory->tool.name}));
    }
    return exitFailure;
}
