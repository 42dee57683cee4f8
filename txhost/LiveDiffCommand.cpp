#include "common/cmFile.h"
#include "txhost/Commands.h"
#include "txhost/Console.h"
#include "txhost/FileDates.h"
#include "txhost/JsonText.h"
#include "txhost/LiveDiffFetch.h"

int runLiveDiff(const HostOptions& options, const std::string& named, const std::string& command, bool background)
{
    const cmStringT path = absolutePaths({named}).front();
    Host host(options);
    if (host.directory().isNull())
        throw HostError("there is no folder of yours for the revision; name one with --cache");
    if (background)
        console::catchInterrupts();
    const LiveDiffFile fetched = fetchLiveDiff(host, path, !background, command);
    if (options.json)
        console::printLine(
            jsonText({{"path", jsonString(path)}, {"cache", jsonString(fetched.cacheFile)}, {"status", fetched.status}}));
    if (fetched.status == 1 && !options.json)
        console::printLine(console::printable(fetched.cacheFile));
    if (fetched.status != 1)
        console::printError(fetched.status == 0 ? cmStringT("interrupted") : failureText(path, fetched.status));
    return fetched.status == 1 ? 0 : 1;
}
