#include "txhost/Commands.h"
#include "txhost/Console.h"
#include "txhost/JsonText.h"

int runFunctions(const HostOptions& options)
{
    Host host(options);
    for (const cmStringT& prototype : host.editor().prototypes())
        console::printLine(options.json ? jsonText({{"prototype", jsonString(prototype)}}) : prototype);
    return 0;
}
