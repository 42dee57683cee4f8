#include "common/cmFile.h"
#include "common/cmStringCatHelper.h"
#include "txhost/Commands.h"
#include "txhost/Console.h"
#include "txhost/FileDates.h"
#include "txhost/HostSystem.h"
#include "txhost/JsonText.h"

#include <utility>

int runRecent(const HostOptions& options, const std::vector<std::string>& named)
{
    const cmArray<cmStringT> paths = absolutePaths(named);
    for (const cmStringT& path : paths) {
        if (cmReadFileItem(path).state != cmItemState::found)
            throw HostError(path, "no such file");
    }
    Host host(options);
    bool complete = true;
    for (const cmStringT& path : paths) {
        // One at a time: of many at once the module hands over the newest only.
        host.call("_RecentFilesAdd", {path});
        host.call("_RecentFilesProcessPending", {});
        if (!isOnRecentList(path)) {
            printFailure({Failure::own, "the system's list of recent documents has not taken it", path}, options.json);
            complete = false;
            continue;
        }
        if (!options.json) {
            console::printLine(cmStringT(cmCat("handed over  ") + console::printable(path)));
            continue;
        }
        Json object;
        addName(object, "path", path);
        printJson(std::move(object));
    }
    return complete ? 0 : 1;
}
