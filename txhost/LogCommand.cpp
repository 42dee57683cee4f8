#include "txhost/Browser.h"
#include "txhost/Commands.h"
#include "txhost/Console.h"
#include "txhost/LogPrinter.h"
#include "txhost/WaitProgress.h"

#include "common/cmStringCatHelper.h"

#include <cstdint>
#include <optional>
#include <string>
#include <utility>

namespace {

/// What the log is restricted to. An order alone restricts nothing, but is given in the same way.
std::string logArguments(const LogOptions& wanted)
{
    if (wanted.order.empty())
        return wanted.restriction;
    return wanted.order + " " + (wanted.restriction.empty() ? "--all" : wanted.restriction);
}

/// Prints the rows of one log as they become final.
class Log {
public:
    Log(Browser& browser, const HostOptions& options, const LogOptions& wanted)
        : m_browser(browser), m_wanted(wanted), m_printer(browser, options.json)
    {
    }

    /// Prints what can be printed, with what is loaded so far. Returns whether the rest of the history is not needed.
    bool goOn()
    {
        const std::int32_t loaded = m_browser.count();
        if (printsWhileLoading())
            printRows();
        else if (!m_wanted.filter.empty() && m_wanted.rows >= 0 && loaded >= m_nextSearch)
            searchAmong(loaded);
        return isEnough();
    }
    /// Prints the rows that could not be printed before the end of the load.
    void finish()
    {
        if (!isEnough() && (m_wanted.filter.empty() || m_browser.filter(m_wanted.filter)))
            printRows();
    }
    bool isEnough() const { return m_wanted.rows >= 0 && m_printed >= m_wanted.rows; }
    bool hasPrinted() const { return m_printed > 0; }

private:
    /// A filter finds its commits, and a restricted log gets its final graph, when the load has ended.
    bool printsWhileLoading() const { return m_wanted.filter.empty() && logArguments(m_wanted).empty(); }

    void printRows()
    {
        const std::int32_t count = m_browser.count();
        GitCommitInfo info;
        GraphRow row;
        for (; m_number < count && !isEnough() && !console::wasInterrupted(); ++m_number) {
            const bool shown = m_browser.commit(m_number, info) && m_browser.graphRow(m_number, row);
            if (!shown && m_wanted.filter.empty())
                break;  // the commit has no row yet
            if (!shown)
                continue;
            m_printer.print(info, m_browser.tags(m_number), row);
            ++m_printed;
        }
    }

    /// Prints the wanted number of rows if so many of the loaded commits contain the filter's text. Each search begins anew, so
    /// they become rarer.
    void searchAmong(std::int32_t loaded)
    {
        m_nextSearch = loaded + loaded / 2;
        if (!m_browser.filter(m_wanted.filter))
            return;
        GraphRow row;
        int found = 0;
        for (std::int32_t number = 0; number < loaded && found < m_wanted.rows; ++number)
            found += m_browser.graphRow(number, row) ? 1 : 0;
        if (found == m_wanted.rows)
            printRows();
    }

    Browser& m_browser;
    const LogOptions& m_wanted;
    LogPrinter m_printer;
    std::int64_t m_number = 0;  ///< of the next commit
    int m_printed = 0;
    std::int32_t m_nextSearch = 256;  ///< at how many loaded commits
};

}  // namespace

int runLog(const HostOptions& options, const std::string& named, const LogOptions& wanted)
{
    const cmStringT repository = browsedDirectory(named);
    Host host(options);
    console::catchInterrupts();
    Browser browser(host, repository, cmROStringT(logArguments(wanted)));
    Log log(browser, options, wanted);
    std::optional<WaitProgress> progress(std::in_place, repository);
    const bool ended = browser.waitFor([&] {
        if (progress)
            progress->tell(cmCat(repository) + ": " + std::to_string(browser.count()) + " commits");
        const bool isDone = log.goOn();
        if (log.hasPrinted())
            progress.reset();
        return isDone;
    });
    progress.reset();
    if (!ended)
        return reportInterrupt(options, repository);
    log.finish();
    const int exitCode = browser.reportFailures(log.isEnough() ? txGitLoadBranches : txGitLoadCommits);
    return console::wasInterrupted() ? 1 : exitCode;
}
