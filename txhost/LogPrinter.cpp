#include "txhost/LogPrinter.h"

#include "common/cmStringCatHelper.h"
#include "filewatcher/git/commits/ShortHash.h"
#include "txhost/Console.h"
#include "txhost/JsonText.h"

LogPrinter::LogPrinter(Browser& browser, bool json)
    : m_browser(browser), m_json(json), m_lines(console::width(), &console::coloured)
{
}

void LogPrinter::print(const GitCommitInfo& info, const cmArray<cmStringT>& tags, const GraphRow& row)
{
    if (!info.hash.isEmpty() && !info.date.isSet())
        console::noteMissingDate();
    if (m_json)
        printJson(info, tags, row);
    else
        console::printLine(m_lines.next(row, entryOf(info, tags)));
}

cmArray<cmStringT> LogPrinter::branchNames(const GitCommitInfo& info)
{
    cmArray<cmStringT> names;
    for (const std::int64_t number : info.branchNumbers) {
        const cmStringT name = m_browser.branchName(static_cast<std::int32_t>(number));
        if (!name.isEmpty())
            names.push_back(name);
    }
    return names;
}

void LogPrinter::printJson(const GitCommitInfo& info, const cmArray<cmStringT>& tags, const GraphRow& row)
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

LogEntry LogPrinter::entryOf(const GitCommitInfo& info, const cmArray<cmStringT>& tags)
{
    LogEntry entry{shortHash(info.hash), {}, console::printable(info.subject), {}};
    for (const cmStringT& name : branchNames(info))
        entry.labels.push_back({console::printable(name), "[]", console::green});
    for (const cmStringT& tag : tags)
        entry.labels.push_back({console::printable(tag), "<>", console::cyan});
    if (!info.hash.isEmpty())
        entry.about = cmCat(console::printable(info.authorName)) + ", " + info.date.text();
    return entry;
}
