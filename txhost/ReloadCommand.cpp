#include "common/cmFile.h"
#include "common/cmStringCatHelper.h"
#include "txhost/Commands.h"
#include "txhost/Console.h"
#include "txhost/FileDates.h"
#include "txhost/JsonText.h"
#include "txhost/TimeText.h"
#include "txhost/WaitProgress.h"

#include <optional>
#include <string>
#include <utility>

namespace {

void printFile(const cmStringT& path, const FileDate& date, bool json)
{
    if (json) {
        Json object;
        addName(object, "path", path);
        if (const cmStringT time = rfc3339(date.time); !time.isNull())
            object["time"] = jsonString(time);
        else
            console::noteMissingDate();
        object["readOnly"] = date.readOnly;
        printJson(std::move(object));
        return;
    }
    const cmStringT padded = cmCat(fileTimeText(date.time)) + "                        ";
    console::printLine(cmStringT(cmCat(padded.view().substr(0, 23)) + (date.readOnly ? "  read-only  " : "             ")
                                 + console::printable(path)));
}

void printSlow(const cmStringT& path, bool json)
{
    if (json) {
        Json object;
        addName(object, "path", path);
        object["slow"] = true;
        printJson(std::move(object));
        return;
    }
    console::printLine(cmStringT(cmCat(console::coloured(console::yellow, "slow                     ")) + "           "
                                 + console::printable(path)));
}

/// Why a file has no date, of which the module has told this much.
std::string reasonOf(const FileDates& dates, const cmStringT& path, int budgetMs)
{
    if (!dates.known.contains(path))
        return "no answer within " + std::to_string(budgetMs) + " ms";
    // The module does not tell the two apart.
    return cmReadFileItem(path).state == cmItemState::missing ? "no such file" : "its date cannot be read";
}

}  // namespace

int runReload(const HostOptions& options, const std::vector<std::string>& named)
{
    Host host(options);
    const cmArray<cmStringT> paths = absolutePaths(named);
    std::optional<WaitProgress> progress(std::in_place, "the dates of files");
    const FileDates dates = askFileDates(host, paths, options.budgetMs);
    progress.reset();
    bool complete = true;
    for (const cmStringT& path : paths) {
        const auto date = dates.known.find(path);
        if (date != dates.known.end() && date->second.time != 0) {
            printFile(path, date->second, options.json);
        } else if (dates.slow.contains(path)) {
            printSlow(path, options.json);
        } else {
            const std::string reason = reasonOf(dates, path, options.budgetMs);
            printFailure({Failure::own, cmROStringT(reason), path}, options.json);
            complete = false;
        }
    }
    return complete ? 0 : 1;
}
