#include "txhost/Browser.h"
#include "txhost/Commands.h"
#include "txhost/Console.h"
#include "txhost/LogPrinter.h"

#include <string>

namespace {

/// Shows how many commits of a long load have arrived.
void showProgress(std::int32_t commits)
{
    console::showProgress(cmStringT(cmROStringT(std::to_string(commits) + " commits")));
}

}  // namespace

int runLog(const HostOptions& options, const std::string& named, const LogOptions& wanted)
{
    const cmStringT repository = browsedDirectory(named);
    Host host(options);
    console::catchInterrupts();
    Browser browser(host, repository, cmROStringT(wanted.restriction));
    LogPrinter printer(browser, options.json);
    std::int64_t number = 0;
    int printed = 0;
    const auto isEnough = [&] { return wanted.rows >= 0 && printed >= wanted.rows; };
    const auto printRows = [&](std::int64_t count) {
        GitCommitInfo info;
        GraphRow row;
        for (; number < count && !isEnough() && !console::wasInterrupted(); ++number) {
            const bool shown = browser.commit(number, info) && browser.graphRow(number, row);
            if (!shown && wanted.filter.empty())
                break;  // the commit has no row yet
            if (!shown)
                continue;
            printer.print(info, browser.tags(number), row);
            ++printed;
        }
    };
    // A filter finds its commits, and a restricted log gets its final graph, when the load has ended.
    const bool printsWhileLoading = wanted.filter.empty() && wanted.restriction.empty();
    const bool ended = browser.waitFor([&] {
        if (!console::isTerminal() || !printsWhileLoading)
            showProgress(browser.count());
        if (printsWhileLoading)
            printRows(browser.count());
        return isEnough();
    });
    console::showProgress("");
    if (!ended)
        return reportInterrupt(options, repository);
    if (wanted.filter.empty() || browser.filter(wanted.filter))
        printRows(browser.count());
    const int exitCode = browser.reportFailures(isEnough() ? txGitLoadBranches : txGitLoadCommits);
    return console::wasInterrupted() ? 1 : exitCode;
}
