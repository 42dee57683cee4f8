#include "common/cmFile.h"
#include "common/cmStringCatHelper.h"
#include "txhost/Commands.h"
#include "txhost/Console.h"
#include "txhost/FileDates.h"
#include "txhost/JsonText.h"

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

}  // namespace

int runReload(const HostOptions& options, const std::vector<std::string>& named)
{
    Host host(options);
    const cmArray<cmStringT> paths = absolutePaths(named);
    const FileDates dates = askFileDates(host, paths, options.budgetMs);
    bool complete = true;
    for (const auto& [path, date] : dates.known) {
        if (date.time == 0 && cmReadFileItem(path).state != cmItemState::missing) {  // the module does not tell the two apart
            console::printError(cmStringT(cmCat(path) + ": its date cannot be read"));
            complete = false;
        } else {
            printFile(path, date, options.json);
        }
    }
    for (const cmStringT& path : paths) {
        if (!dates.known.contains(path))  // the file is slow, or there was no answer within the budget
            printSlow(path, options.json);
    }
    return complete ? 0 : 1;
}
