#include "common/cmFile.h"
#include "common/cmStringCatHelper.h"
#include "txhost/Commands.h"
#include "txhost/Console.h"
#include "txhost/FileDates.h"
#include "txhost/JsonText.h"
#include "txhost/StatusPoll.h"

#include <algorithm>

namespace {

/// Prints what has changed since the previous round.
class ChangePrinter {
public:
    explicit ChangePrinter(bool json) : m_json(json) {}

    /// Prints changed dates. The first dates of a file are only stored.
    void show(const FileDates& dates)
    {
        for (const auto& [path, date] : dates.known) {
            const auto [before, isNew] = m_dates.known.emplace(path, date);
            if (isNew || before->second == date)
                continue;
            printDateChange(path, before->second, date);
            before->second = date;
        }
        for (const cmStringT& path : dates.slow) {
            if (std::find(m_dates.slow.begin(), m_dates.slow.end(), path) == m_dates.slow.end())
                print("slow", console::yellow, path);
        }
        m_dates.slow = dates.slow;
    }

    /// Prints changed status; everything in the first round is a change.
    void show(StatusRound round)
    {
        keepUnknownFiles(round);
        for (const cmStringT& path : round.outside) {
            if (std::find(m_last.outside.begin(), m_last.outside.end(), path) == m_last.outside.end())
                print("outside", console::grey, path);
        }
        for (const auto& [path, failure] : round.failed) {
            const auto before = m_last.failed.find(path);
            if (before == m_last.failed.end() || before->second != failure)
                printFailure(path, failure, m_json);
        }
        for (const auto& [path, status] : round.files) {
            const auto before = m_last.files.find(path);
            if (before != m_last.files.end() && before->second == status)
                continue;
            if (std::find(status.local.begin(), status.local.end(), "mod") != status.local.end())
                print("modified", console::yellow, path);
            else if (!status.local.empty())
                print("opened", console::yellow, path);
            else
                print("outdated", console::red, path);
        }
        for (const auto& [path, status] : m_last.files) {
            if (!round.files.contains(path))
                print("clean", console::green, path);
        }
        m_last = round;
    }

private:
    /// When a tool failed in one of its directories, the status of its files is unknown: they keep their previous status.
    void keepUnknownFiles(StatusRound& round) const
    {
        for (const auto& file : m_last.files) {
            const bool unknown = std::any_of(round.failed.begin(), round.failed.end(),
                                             [&file](const auto& failure) { return failure.second.tool == file.second.tool; });
            if (unknown)
                round.files.insert(file);
        }
    }

    void printDateChange(const cmStringT& path, const FileDate& before, const FileDate& date)
    {
        if (date.time == 0)
            print("removed", console::red, path);
        else if (before.time == 0)
            print("created", console::green, path);
        else if (before.time != date.time)
            print("changed", console::yellow, path);
        else
            print(date.readOnly ? "read-only" : "writable", console::grey, path);
    }

    void print(cmROStringT change, int colour, const cmStringT& path)
    {
        const cmStringT time = console::timeOfDay();
        if (m_json) {
            console::printLine(
                jsonText({{"time", jsonString(time)}, {"change", jsonString(change)}, {"path", jsonString(path)}}));
            return;
        }
        const cmStringT padded = cmCat(change) + "          ";
        console::printLine(
            cmStringT(cmCat(time) + "  " + console::coloured(colour, padded.view().substr(0, 10)) + console::printable(path)));
    }

    bool m_json;
    StatusRound m_last;
    FileDates m_dates;
};

bool isDirectory(const std::string& name)
{
    return cmIsDirectory(name);
}

}  // namespace

int runWatch(const HostOptions& options, const std::vector<std::string>& named)
{
    std::vector<std::string> names = named;
    const auto firstFile = std::stable_partition(names.begin(), names.end(), &isDirectory);
    const cmArray<cmStringT> files = absolutePaths({firstFile, names.end()});
    for (const cmStringT& file : files) {
        if (cmReadFileItem(file).state == cmItemState::missing)
            throw HostError(std::string("no such file or directory: ") + file.c_str());
    }
    const cmArray<WatchedDirectory> directories = watchedDirectories({names.begin(), firstFile}, options.tool);
    Host host(options);
    requireTools(host, directories);
    console::catchInterrupts();
    ChangePrinter printer(options.json);
    for (;;) {
        printer.show(askFileDates(host, files, options.budgetMs));
        const StatusRound round = pollStatus(host, directories);
        if (!round.finished)
            return 0;
        printer.show(round);
        if (files.empty() && round.isSwitchedOff(directories.size()))
            return 1;
        if (host.editor().runUntil([] { return console::wasInterrupted(); }, options.intervalSeconds * 1000))
            return 0;
    }
}
