#include "txhost/LogPrinter.h"

#include "common/cmStringCatHelper.h"
#include "filewatcher/git/commits/ShortHash.h"
#include "txhost/CommitJson.h"
#include "txhost/Console.h"

#include <utility>

LogPrinter::LogPrinter(Browser& browser, bool json)
    : m_browser(browser), m_json(json),
      m_lines(console::width(), &console::coloured, console::showsUTF8() ? Symbols::unicode : Symbols::plain)
{
}

void LogPrinter::print(const GitCommitInfo& info, const cmArray<cmStringT>& tags, const GraphRow& row)
{
    if (m_json) {
        printRow(info, tags, row);
        return;
    }
    if (!info.hash.isEmpty() && !info.date.isSet())
        console::noteMissingDate();
    console::printLine(m_lines.next(row, entryOf(info, tags)));
}

void LogPrinter::printRow(const GitCommitInfo& info, const cmArray<cmStringT>& tags, const GraphRow& row)
{
    Json object{{"row", info.row}};
    object.update(commitJson(info));
    addNames(object, "branches", m_browser.branchNames(info));
    addNames(object, "tags", tags);
    object["column"] = row.column;
    printJson(std::move(object));
}

LogEntry LogPrinter::entryOf(const GitCommitInfo& info, const cmArray<cmStringT>& tags)
{
    LogEntry entry{shortHash(info.hash), {}, console::printable(info.subject), {}};
    for (const cmStringT& name : m_browser.branchNames(info))
        entry.labels.push_back({console::printable(name), "[]", console::green});
    for (const cmStringT& tag : tags)
        entry.labels.push_back({console::printable(tag), "<>", console::cyan});
    if (!info.hash.isEmpty())
        entry.about = cmCat(console::printable(info.authorName)) + ", " + info.date.text();
    return entry;
}
