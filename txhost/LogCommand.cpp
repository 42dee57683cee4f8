#include "common/cmStringCatHelper.h"
#include "filewatcher/git/commits/ShortHash.h"
#include "txhost/Browser.h"
#include "txhost/Commands.h"
#include "txhost/Console.h"
#include "txhost/GraphText.h"
#include "txhost/JsonText.h"
#include "txhost/TextWidth.h"

#include <algorithm>

namespace {

/// Prints the rows of the browser.
class RowPrinter {
public:
    RowPrinter(Browser& browser, bool json) : m_browser(browser), m_json(json) {}

    void print(const GitCommitInfo& info, const cmArray<cmStringT>& tags, const GraphRow& row)
    {
        if (!info.hash.isEmpty() && !info.date.isSet())
            console::noteMissingDate();
        if (m_json)
            printJson(info, tags, row);
        else
            printPlain(info, tags, row);
    }

private:
    cmArray<cmStringT> branchNames(const GitCommitInfo& info)
    {
        cmArray<cmStringT> names;
        for (const std::int64_t number : info.branchNumbers) {
            const cmStringT name = m_browser.branchName(static_cast<std::int32_t>(number));
            if (!name.isEmpty())
                names.push_back(name);
        }
        return names;
    }

    void printJson(const GitCommitInfo& info, const cmArray<cmStringT>& tags, const GraphRow& row)
    {
        Json parents = Json::array();
        if (!info.firstParent.isEmpty())
            parents.push_back(jsonString(info.firstParent));
        for (const cmStringT& parent : info.otherParents)
            parents.push_back(jsonString(parent));
        Json branches = Json::array();
        for (const cmStringT& name : branchNames(info))
            branches.push_back(jsonString(name));
        Json tagNames = Json::array();
        for (const cmStringT& tag : tags)
            tagNames.push_back(jsonString(tag));
        console::printLine(jsonText({{"row", info.row},
                                     {"hash", jsonString(info.hash)},
                                     {"parents", parents},
                                     {"author", jsonString(info.authorName)},
                                     {"email", jsonString(info.authorEmail)},
                                     {"date", jsonString(info.date.text())},
                                     {"subject", jsonString(info.subject)},
                                     {"branches", branches},
                                     {"tags", tagNames},
                                     {"column", row.column}}));
    }

    void printPlain(const GitCommitInfo& info, const cmArray<cmStringT>& tags, const GraphRow& row)
    {
        const std::size_t graphWidth = m_graphWidth.next(row);
        cmStringT names("");
        for (const cmStringT& name : branchNames(info))
            names += cmStringT(cmCat("[") + console::printable(name) + "] ");
        cmStringT tagNames("");
        for (const cmStringT& tag : tags)
            tagNames += cmStringT(cmCat("<") + console::printable(tag) + "> ");
        const cmStringT hash = info.hash.isEmpty() ? cmStringT("       ") : cmStringT(shortHash(info.hash));
        const cmStringT about = info.hash.isEmpty()
                                    ? cmStringT("")
                                    : cmStringT(cmCat("  ") + console::printable(info.authorName) + ", " + info.date.text());
        cmStringT subject = console::printable(info.subject);
        if (const std::size_t width = console::width()) {
            const std::size_t taken = graphWidth + shortHashLength + 1;
            const std::size_t left = width > taken ? width - taken : 0;
            names = shortened(names, left / 2);
            tagNames = shortened(tagNames, left / 2 - textWidth(names));
            const std::size_t forSubject = left - textWidth(names) - textWidth(tagNames);
            const std::size_t forAbout = textWidth(about);
            // The subject matters more: author and date are shown only when it keeps 20 columns beside them.
            const bool both = forSubject >= forAbout + 20;
            subject = shortened(subject, both ? forSubject - forAbout : forSubject);
            console::printLine(line(row, graphWidth, hash, names, tagNames, subject, both ? about : cmStringT("")));
            return;
        }
        console::printLine(line(row, graphWidth, hash, names, tagNames, subject, about));
    }

    static cmStringT line(const GraphRow& row, std::size_t graphWidth, const cmStringT& hash, const cmStringT& names,
                          const cmStringT& tagNames, const cmStringT& subject, const cmStringT& about)
    {
        return cmCat(graphText(row, graphWidth, &console::coloured)) + console::coloured(console::yellow, hash) + " "
               + console::coloured(console::green, names) + console::coloured(console::cyan, tagNames) + subject
               + console::coloured(console::grey, about);
    }

    Browser& m_browser;
    bool m_json;
    GraphWidth m_graphWidth{console::width()};
};

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
    RowPrinter printer(browser, options.json);
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
    const bool ended = browser.waitFor([&] {
        if (!console::isTerminal() || !wanted.filter.empty())
            showProgress(browser.count());
        if (wanted.filter.empty())
            printRows(browser.count());
        return isEnough();
    });
    console::showProgress("");
    if (!ended) {
        console::printInterrupted();
        return 1;
    }
    if (wanted.filter.empty() || browser.filter(wanted.filter))
        printRows(browser.count());
    const int exitCode = browser.reportFailures(isEnough() ? txGitLoadBranches : txGitLoadCommits);
    return console::wasInterrupted() ? 1 : exitCode;
}
