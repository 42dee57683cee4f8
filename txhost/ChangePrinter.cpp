#include "txhost/ChangePrinter.h"

#include "common/cmFile.h"
#include "common/cmStringCatHelper.h"
#include "txhost/Console.h"
#include "txhost/JsonText.h"
#include "txhost/TimeText.h"

#include <algorithm>
#include <chrono>
#include <string>
#include <utility>

namespace {

/// A status in words, the most important one first.
cmStringT statusText(const FileStatus& file)
{
    if (file.isClean())
        return "clean";
    cmStringT text("");
    if (std::find(file.local.begin(), file.local.end(), "mod") != file.local.end())
        text = "modified";
    else if (!file.local.empty())
        text = "opened";
    if (!file.repository.empty())
        text += text.isEmpty() ? "outdated" : ",outdated";
    return text;
}

int colourOf(cmROStringT change)
{
    return change == "clean" ? console::green : change == "outdated" ? console::red : console::yellow;
}

/// What of a date differs from `other`, as text.
cmStringT dateText(const FileDate& date, const FileDate& other, bool json)
{
    if (date.time == other.time)
        return date.readOnly ? "read-only" : "writable";
    if (date.time == 0)
        return "missing";
    return json ? rfc3339(date.time) : fileTimeText(date.time);
}

cmStringT localNow()
{
    cmDateTime local;
    const bool isKnown = cmLocalDateTime(std::chrono::system_clock::to_time_t(std::chrono::system_clock::now()), local);
    return isKnown ? cmDateTimeText(local) : "-";
}

cmStringT padded(cmROStringT text, std::size_t width)
{
    std::string wide(text);
    wide.resize(std::max(wide.size(), width), ' ');
    return cmStringT(wide);
}

}  // namespace

ChangePrinter::ChangePrinter(bool json, std::function<void(const cmStringT& path)> onChange)
    : m_json(json), m_onChange(std::move(onChange)), m_since(localNow())
{
}

void ChangePrinter::show(const FileDates& dates)
{
    for (const auto& [path, date] : dates.known) {
        const auto [before, isNew] = m_dates.known.emplace(path, date);
        if (!isNew && before->second != date)
            showDateChange(path, std::exchange(before->second, date), date);
    }
    for (const cmStringT& path : dates.slow) {
        if (!m_dates.slow.contains(path))
            print({"slow", console::yellow, path});
    }
    m_dates.slow = dates.slow;
}

void ChangePrinter::show(const PassAnswer& answer)
{
    const cmStringT& path = answer.directory.path;
    const cmROStringT tool = answer.directory.tool.name;
    const bool isMissing = !cmIsDirectory(path);
    Directory& before = m_directories[path];
    if (isMissing != std::exchange(before.isMissing, isMissing))
        printChange({isMissing ? "vanished" : "returned", isMissing ? console::red : console::green, path, tool});
    if (!answer.failure && !isMissing)
        showPlace(answer, before);
    showFiles(answer.files, !before.hasAnswered);
    if (isMissing)
        return;  // that is why the tool has failed
    if (before.failure && !answer.failure)
        print({"answers", console::green, path, tool});
    if (answer.failure && answer.failure != before.failure)
        show(*answer.failure);
    before.failure = answer.failure;
    before.hasAnswered = before.hasAnswered || !answer.failure || answer.failure->code == Failure::server;
}

void ChangePrinter::showFound(const WatchedDirectory& directory)
{
    printChange({"returned", console::green, directory.path, directory.tool.name});
}

void ChangePrinter::show(const Tool& tool, const FileStatuses& files)
{
    showFiles(files, m_tools.insert(tool.number).second);
}

cmStringT ChangePrinter::summary() const
{
    const auto counted = [](std::size_t count, const std::string& what) {
        return std::to_string(count) + " " + what + (count == 1 ? "" : "s");
    };
    return cmCat(counted(m_changes, "change")) + " of " + counted(m_changedPaths.size(), "path") + " since " + m_since;
}

/// Prints whether the directory is in a repository: that it is in none, and each change of it.
void ChangePrinter::showPlace(const PassAnswer& answer, Directory& before)
{
    if (answer.isOutside == std::exchange(before.isOutside, answer.isOutside))
        return;
    const Line line{answer.isOutside ? "outside" : "inside", console::grey, answer.directory.path, answer.directory.tool.name};
    if (before.hasAnswered)
        printChange(line);
    else
        print(line);
}

void ChangePrinter::showFiles(const FileStatuses& files, bool isFirst)
{
    for (const auto& [key, file] : files) {
        const auto known = m_statuses.extract(key);
        const cmStringT is = statusText(file);
        cmStringT was = known ? known.mapped() : isFirst ? cmStringT() : cmStringT("clean");
        if (!file.isClean())
            m_statuses[key] = is;
        cmROStringT words = is;
        const cmROStringT change = cmTakeUntil(words, ',');
        const Line line{change, colourOf(change), file.path, file.tool, was, is};
        if (was.isNull())
            print(line);
        else
            printChange(line);
    }
}

void ChangePrinter::showDateChange(const cmStringT& path, const FileDate& before, const FileDate& date)
{
    const cmStringT was = dateText(before, date, m_json);
    const cmStringT is = dateText(date, before, m_json);
    if (date.time == 0)
        printChange({"removed", console::red, path, {}, was, is});
    else if (before.time == 0)
        printChange({"created", console::green, path, {}, was, is});
    else if (before.time != date.time)
        printChange({"changed", console::yellow, path, {}, was, is});
    else
        printChange({is, console::grey, path, {}, was, is});
}

void ChangePrinter::show(const Failure& failure)
{
    if (console::isReaderGone())
        return;
    if (m_json) {
        Json object{{"time", jsonString(rfc3339Now())}};
        object.update(failureJson(failure));
        printJson(std::move(object));
    }
    console::printError(failureText(failure));
}

void ChangePrinter::printChange(const Line& line)
{
    ++m_changes;
    m_changedPaths.insert(line.path);
    print(line);
    m_onChange(line.path);
}

void ChangePrinter::print(const Line& line)
{
    if (m_json) {
        Json object{{"time", jsonString(rfc3339Now())}, {"change", jsonString(line.change)}};
        addName(object, "path", line.path);
        for (const auto& [key, text] : {std::pair("tool", line.tool), {"was", line.was}, {"is", line.is}}) {
            if (!text.empty())
                object[key] = jsonString(text);
        }
        printJson(std::move(object));
        return;
    }
    cmStringT text = cmCat(localNow()) + "  " + padded(line.tool.empty() ? "-" : line.tool, 5)
                     + console::coloured(line.colour, padded(line.change, 11)) + console::printable(line.path);
    cmStringT states;
    if (!line.was.isNull())
        states = cmCat("  (was ") + line.was;
    if (!line.was.isNull() && line.is != line.change)
        states += cmStringT(cmCat(", is ") + line.is);
    if (!line.was.isNull())
        text += console::coloured(console::grey, cmStringT(cmCat(states) + ")"));
    console::printLine(text);
}
