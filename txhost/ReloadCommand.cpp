#include "common/cmFile.h"
#include "common/cmStringCatHelper.h"
#include "txhost/Commands.h"
#include "txhost/Console.h"
#include "txhost/FileDates.h"
#include "txhost/JsonText.h"

#include <string>

namespace {

void printFile(const cmStringT& path, const FileDate& date, bool json)
{
    if (json) {
        console::printLine(jsonText({{"path", jsonString(path)}, {"time", date.time}, {"readOnly", date.readOnly}}));
        return;
    }
    const cmStringT padded = cmCat(fileTimeText(date.time)) + "                        ";
    console::printLine(cmStringT(cmCat(padded.view().substr(0, 23)) + (date.readOnly ? "  read-only  " : "             ")
                                 + console::printable(path)));
}

void printSlow(const cmStringT& path, bool json)
{
    if (json)
        console::printLine(jsonText({{"path", jsonString(path)}, {"slow", true}}));
    else
        console::printLine(cmStringT(cmCat(console::coloured(console::yellow, "slow                     ")) + "           "
                                     + console::printable(path)));
}

void printFailure(const cmStringT& path, const std::string& meaning, bool json)
{
    if (json)
        console::printLine(jsonText({{"path", jsonString(path)}, {"meaning", meaning}}));
    console::printError(cmStringT(cmCat(path) + ": " + meaning));
}

}  // namespace

int runReload(const HostOptions& options, const std::vector<std::string>& named)
{
    Host host(options);
    const cmArray<cmStringT> paths = absolutePaths(named);
    const FileDates dates = askFileDates(host, paths, options.budgetMs);
    bool complete = true;
    for (const auto& [path, date] : dates.known) {
        if (date.time == 0 && cmReadFileItem(path).state != cmItemState::missing) {  // the module does not tell the two apart
            printFailure(path, "its date cannot be read", options.json);
            complete = false;
        } else {
            printFile(path, date, options.json);
        }
    }
    for (const cmStringT& path : paths) {
        if (dates.known.contains(path))
            continue;
        if (dates.slow.contains(path)) {
            printSlow(path, options.json);
        } else {
            printFailure(path, "no answer within " + std::to_string(options.budgetMs) + " ms", options.json);
            complete = false;
        }
    }
    return complete ? 0 : 1;
}
