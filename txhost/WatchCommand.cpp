#include "common/CommandRunner.h"
#include "common/cmFile.h"
#include "common/cmPath.h"
#include "txhost/ChangeCommand.h"
#include "txhost/ChangePrinter.h"
#include "txhost/Commands.h"
#include "txhost/Console.h"

#include <algorithm>
#include <cmath>
#include <set>
#include <utility>

namespace {

using Clock = StatusPoll::Clock;

/// Asks for dates and status, each tool in its own rounds: the interval between two counts from the end of the first.
class Watch {
public:
    Watch(Host& host, const std::string& command)
        : m_host(host), m_command(command, host.options().json),
          m_printer(host.options().json, [this](const cmStringT& path) { m_command.add(path); }), m_poll(host, {}, listener())
    {
    }

    /// Watches a file or directory, or what will come to be there.
    void add(const cmStringT& path)
    {
        if (isMissing(path)) {
            m_missing.push_back(path);
            m_printer.show(Failure{Failure::own, "no such file or directory", path});
        } else if (cmIsDirectory(path)) {
            addDirectory(path);
        } else {
            m_files.push_back(path);
        }
    }

    /// Returns the exit code: after an interrupt that of summarize; 1 when the output cannot be written any more, or when there
    /// is nothing to watch: every name has failed or its tool is switched off.
    int run()
    {
        for (;;) {
            m_hasRoundEnded = false;
            startWhatIsDue();
            if (isOver())
                return 1;
            m_poll.runUntil([this] { return hasNews(); }, nextDue());
            if (console::wasInterrupted())
                return summarize();
        }
    }

private:
    static constexpr Clock::time_point never = Clock::time_point::max();

    struct Round {
        Clock::time_point due;      ///< when the next one begins: at once; never while one is going on
        bool isSwitchedOff = true;  ///< the tool wrote too much in every directory, which ends its thread for good
    };

    static bool isMissing(const cmStringT& path) { return cmReadFileItem(path).state == cmItemState::missing; }

    StatusListener listener()
    {
        return {[this](const PassAnswer& answer) {
                    m_printer.show(answer);
                    if (!answer.failure || answer.failure->code != statusOutputLimit)
                        m_rounds[answer.directory.tool.number].isSwitchedOff = false;
                },
                [this](const Tool& tool, const FileStatuses& files) {
                    m_printer.show(tool, files);
                    m_hasRoundEnded = true;
                    Round& round = m_rounds[tool.number];
                    round.due = round.isSwitchedOff ? never : afterInterval();
                }};
    }

    /// Returns the directory; nothing when it has failed.
    cmArray<WatchedDirectory> addDirectory(const cmStringT& path)
    {
        const auto fail = [this](const Failure& failure) {
            m_printer.show(failure);
            m_hasFailed = true;
        };
        const auto named = watchedDirectories({std::string(path.view())}, m_host.options().tool, fail);
        const cmArray<WatchedDirectory> directories = withTheirTools(m_host, named, fail);
        for (const WatchedDirectory& directory : directories) {
            m_poll.add(directory);
            m_rounds.try_emplace(directory.tool.number);
        }
        return directories;
    }

    /// Takes up what was missing and is there now.
    void takeUpMissing()
    {
        for (const cmStringT& path : std::exchange(m_missing, {})) {
            if (isMissing(path)) {
                m_missing.push_back(path);
            } else if (cmIsDirectory(path)) {
                for (const WatchedDirectory& directory : addDirectory(path))
                    m_printer.showFound(directory);
            } else {
                m_printer.noteMissing(path);
                m_files.push_back(path);
            }
        }
    }

    void startWhatIsDue()
    {
        if (m_filesDue <= Clock::now())
            lookAtFiles();
        for (auto& [tool, round] : m_rounds) {
            if (round.due > Clock::now())
                continue;
            round = {never, true};
            m_poll.start(toolNumbered(tool));
        }
    }

    void lookAtFiles()
    {
        takeUpMissing();
        if (!m_files.empty())
            m_printer.show(askFileDates(m_host, m_files, m_host.options().budgetMs));
        m_filesDue = m_files.empty() && m_missing.empty() ? never : afterInterval();
    }

    Clock::time_point afterInterval() const
    {
        return Clock::now() + std::chrono::milliseconds(std::llround(m_host.options().intervalSeconds * 1000));
    }

    Clock::time_point nextDue() const
    {
        Clock::time_point next = m_filesDue;
        for (const auto& [tool, round] : m_rounds)
            next = std::min(next, round.due);
        return next;
    }

    bool hasNews()
    {
        m_command.advance();
        return m_hasRoundEnded || console::wasInterrupted() || console::isOutputBroken();
    }

    /// Tells which directories have never answered, and the summary. Returns 1 when there are such ones, when a name has failed
    /// or is still missing; else 0.
    int summarize()
    {
        bool isComplete = !m_hasFailed && m_missing.empty();
        for (const WatchedDirectory* directory : m_poll.unanswered()) {
            if (m_printer.knows(directory->path))
                continue;
            m_printer.show(Failure{Failure::stopped, "interrupted", directory->path, directory->tool.name});
            isComplete = false;
        }
        if (!console::isReaderGone())
            console::printError(m_printer.summary());
        return isComplete ? 0 : 1;
    }

    bool isOver() const { return console::isOutputBroken() || (!m_poll.isWaiting() && nextDue() == never); }

    Host& m_host;
    cmArray<cmStringT> m_files;
    cmArray<cmStringT> m_missing;  ///< names of nothing so far
    ChangeCommand m_command;
    ChangePrinter m_printer;
    cmSortedDictionary<std::int32_t, Round> m_rounds;  ///< by the tool's number
    StatusPoll m_poll;
    Clock::time_point m_filesDue;  ///< at once
    bool m_hasRoundEnded = false;
    bool m_hasFailed = false;  ///< a name cannot be watched
};

}  // namespace

int runWatch(const HostOptions& options, const std::vector<std::string>& named, const std::string& command)
{
    const cmArray<cmStringT> paths = absolutePaths(named);
    Host host(options);
    console::catchInterrupts();
    Watch watch(host, command);
    std::set<cmStringT> seen;
    for (const cmStringT& each : paths) {
        const cmStringT path(cmWithoutTrailingSeparator(each));
        if (seen.insert(path).second)
            watch.add(path);
    }
    return watch.run();
}
