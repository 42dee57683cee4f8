#include "common/cmFile.h"
#include "common/cmStringCatHelper.h"
#include "txhost/Commands.h"
#include "txhost/Console.h"
#include "txhost/FileDates.h"
#include "txhost/HostSystem.h"
#include "txhost/JsonText.h"

int runRecent(const HostOptions& options, const std::vector<std::string>& named)
{
    const cmArray<cmStringT> paths = absolutePaths(named);
    for (const cmStringT& path : paths) {
        if (cmReadFileItem(path).state != cmItemState::found)
            throw HostError(std::string("no such file: ") + path.c_str());
    }
    Host host(options);
    bool complete = true;
    for (const cmStringT& path : paths) {
        // One at a time: of many at once the module hands over the newest only.
        host.call("_RecentFilesAdd", {path});
        host.call("_RecentFilesProcessPending", {});
        if (!isOnRecentList(path)) {
            console::printError(cmStringT(cmCat(path) + ": the system's list of recent documents has not taken it"));
            complete = false;
            continue;
        }
        if (options.json)
            console::printLine(jsonText({{"path", jsonString(path)}}));
        else
            console::printLine(cmStringT(cmCat("handed over  ") + console::printable(path)));
    }
    return complete ? 0 : 1;
}
