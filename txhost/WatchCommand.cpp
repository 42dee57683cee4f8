#include "common/CommandRunner.h"
#include "common/cmFile.h"
#include "txhost/ChangeCommand.h"
#include "txhost/ChangePrinter.h"
#include "txhost/Commands.h"
#include "txhost/Console.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace {

using Clock = StatusPoll::Clock;

/// Asks for dates and status, each tool in its own rounds: the interval between two counts from the end of the first.
class Watch {
public:
    Watch(Host& host, cmArray<cmStringT> files, cmArray<WatchedDirectory> directories, const std::string& command)
        : m_host(host), m_files(std::move(files)), m_command(command, host.options().json),
          m_printer(host.options().json, [this](const cmStringT& path) { m_command.add(path); }),
          m_poll(host, std::move(directories), listener()), m_datesDue(m_files.empty() ? never : Clock::now())
    {
        for (const Tool* tool : m_poll.tools())
            m_rounds[tool->number].due = Clock::now();
    }

    /// Returns the exit code: after an interrupt 0, with a summary on standard error; 1 when the output cannot be written any
    /// more, or when every tool is switched off and there are no files.
    int run()
    {
        while (!isOver()) {
            m_hasRoundEnded = false;
            startWhatIsDue();
            m_poll.runUntil([this] { return hasNews(); }, nextDue());
            if (console::wasInterrupted())
                return summarize();
        }
        return 1;
    }

private:
    static constexpr Clock::time_point never = Clock::time_point::max();

    struct Round {
        Clock::time_point due;      ///< when the next one begins; never while one is going on
        bool isSwitchedOff = true;  ///< the tool wrote too much in every directory, which ends its thread for good
    };

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

    void startWhatIsDue()
    {
        for (auto& [tool, round] : m_rounds) {
            if (round.due > Clock::now())
                continue;
            round = {never, true};
            m_poll.start(toolNumbered(tool));
        }
        if (m_datesDue > Clock::now())
            return;
        m_printer.show(askFileDates(m_host, m_files, m_host.options().budgetMs));
        m_datesDue = afterInterval();
    }

    Clock::time_point afterInterval() const
    {
        return Clock::now() + std::chrono::milliseconds(std::llround(m_host.options().intervalSeconds * 1000));
    }

    Clock::time_point nextDue() const
    {
        Clock::time_point next = m_datesDue;
        for (const auto& [tool, round] : m_rounds)
            next = std::min(next, round.due);
        return next;
    }

    bool hasNews()
    {
        m_command.advance();
        return m_hasRoundEnded || console::wasInterrupted() || console::isOutputBroken();
    }

    int summarize() const
    {
        if (!console::isReaderGone())
            console::printError(m_printer.summary());
        return 0;
    }

    bool isOver() const { return console::isOutputBroken() || (!m_poll.isWaiting() && nextDue() == never); }

    Host& m_host;
    const cmArray<cmStringT> m_files;
    ChangeCommand m_command;
    ChangePrinter m_printer;
    cmSortedDictionary<std::int32_t, Round> m_rounds;  ///< by the tool's number
    StatusPoll m_poll;
    Clock::time_point m_datesDue;
    bool m_hasRoundEnded = false;
};

bool isDirectory(const std::string& name)
{
    return cmIsDirectory(name);
}

}  // namespace

int runWatch(const HostOptions& options, const std::vector<std::string>& named, const std::string& command)
{
    std::vector<std::string> names = named;
    const auto firstFile = std::stable_partition(names.begin(), names.end(), &isDirectory);
    const cmArray<cmStringT> files = absolutePaths({firstFile, names.end()});
    for (const cmStringT& file : files) {
        if (cmReadFileItem(file).state == cmItemState::missing)
            throw HostError(file, "no such file or directory");
    }
    const cmArray<WatchedDirectory> directories = watchedDirectories({names.begin(), firstFile}, options.tool);
    Host host(options);
    requireTools(host, directories);
    console::catchInterrupts();
    return Watch(host, files, directories, command).run();
}
