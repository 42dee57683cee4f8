#include "txhost/BrowserPath.h"

#include "common/cmStringCatHelper.h"
#include "txhost/Console.h"
#include "txhost/StatusPoll.h"

cmStringT browsedDirectory(const std::string& named)
{
    return watchedDirectories({named}, gitTool.name).front().path;
}

int reportNothingToBrowse(const cmStringT& directory)
{
    const Tool* tool = findMarkedTool(directory);
    if (tool && tool->number == gitTool.number) {
        console::printError(cmStringT(cmCat(directory) + ": no commit yet"));
        return 0;
    }
    console::printError(cmStringT(cmCat(directory) + ": no Git repository, or one without commits (--debug tells why)"));
    return 1;
}
