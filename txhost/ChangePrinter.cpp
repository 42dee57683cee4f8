#include "txhost/ChangePrinter.h"

#include "common/cmStringCatHelper.h"
#include "txhost/Console.h"
#include "txhost/JsonText.h"

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
        print("outside", console::grey, path);
    if (before.failure && !answer.failure)
        print("answers", console::green, path);
    show(answer.files);
    if (answer.failure && answer.failure != before.failure)
        printFailure(path, *answer.failure, m_json);
    before = {answer.isOutside, answer.failure};
}

void ChangePrinter::show(const FileStatuses& files)
{
    for (const auto& [key, file] : files) {
        if (file.isClean())
            print("clean", console::green, file.path);
        else if (std::find(file.local.begin(), file.local.end(), "mod") != file.local.end())
            print("modified", console::yellow, file.path);
        else if (!file.local.empty())
            print("opened", console::yellow, file.path);
        else
            print("outdated", console::red, file.path);
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

void ChangePrinter::print(cmROStringT change, int colour, const cmStringT& path)
{
    const cmStringT time = console::timeOfDay();
    if (m_json) {
        console::printLine(jsonText({{"time", jsonString(time)}, {"change", jsonString(change)}, {"path", jsonString(path)}}));
        return;
    }
    const cmStringT padded = cmCat(change) + "          ";
    console::printLine(
        cmStringT(cmCat(time) + "  " + console::coloured(colour, padded.view().substr(0, 10)) + console::printable(path)));
}
