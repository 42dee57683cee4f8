#include "txhost/ChangePrinter.h"

#include "common/cmStringCatHelper.h"
#include "txhost/Console.h"
#include "txhost/JsonText.h"
#include "txhost/TimeText.h"

#include <algorithm>
#include <utility>

void ChangePrinter::show(const FileDates& dates)
{
    for (const auto& [path, date] : dates.known) {
        const auto [before, isNew] = m_dates.known.emplace(path, date);
        if (!isNew && before->second != date)
            showDateChange(path, std::exchange(before->second, date), date);
    }
    for (const cmStringT& path : dates.slow) {
        if (!m_dates.slow.contains(path))
            print("slow", console::yellow, path);
    }
    m_dates.slow = dates.slow;
}

void ChangePrinter::show(const PassAnswer& answer)
{
    const cmStringT& path = answer.directory.path;
    Directory& before = m_directories[path];
    if (answer.isOutside && !before.isOutside)
        print("outside", console::grey, path, answer.directory.tool.name);
    if (before.failure && !answer.failure)
        print("answers", console::green, path, answer.directory.tool.name);
    show(answer.files);
    if (answer.failure && answer.failure != before.failure)
        printFailure(*answer.failure);
    before = {answer.isOutside, answer.failure};
}

void ChangePrinter::show(const FileStatuses& files)
{
    for (const auto& [key, file] : files) {
        if (file.isClean())
            print("clean", console::green, file.path, file.tool);
        else if (std::find(file.local.begin(), file.local.end(), "mod") != file.local.end())
            print("modified", console::yellow, file.path, file.tool);
        else if (!file.local.empty())
            print("opened", console::yellow, file.path, file.tool);
        else
            print("outdated", console::red, file.path, file.tool);
    }
}

void ChangePrinter::showDateChange(const cmStringT& path, const FileDate& before, const FileDate& date)
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

void ChangePrinter::printFailure(const Failure& failure)
{
    if (m_json) {
        Json object{{"time", jsonString(rfc3339Now())}};
        object.update(failureJson(failure));
        printJson(std::move(object));
    }
    console::printError(failureText(failure));
}

void ChangePrinter::print(cmROStringT change, int colour, const cmStringT& path, cmROStringT tool)
{
    if (m_json) {
        Json object{{"time", jsonString(rfc3339Now())}, {"change", jsonString(change)}};
        addName(object, "path", path);
        if (!tool.empty())
            object["tool"] = jsonString(tool);
        printJson(std::move(object));
        return;
    }
    const cmStringT padded = cmCat(change) + "          ";
    console::printLine(cmStringT(cmCat(console::timeOfDay()) + "  " + console::coloured(colour, padded.view().substr(0, 10))
                                 + console::printable(path)));
}
