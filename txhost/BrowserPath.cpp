#include "txhost/BrowserPath.h"

#include "common/cmStringCatHelper.h"
#include "txhost/Console.h"
#include "txhost/StatusPoll.h"

cmStringT browsedDirectory(const std::string& named)
{
    return watchedDirectories({named}, gitTool.name).front().path;
}

int reportNothingToBrowse(Host& host, const cmStringT& directory)
{
    const cmStringT complaint = host.toolComplaint();
    console::printError(cmStringT(cmCat(directory) + ": " + (complaint.isNull() ? cmStringT("no commits") : complaint)));
    return complaint.isNull() ? 0 : 1;
}
