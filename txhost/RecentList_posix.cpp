#include "common/cmPath.h"
#include "txhost/RecentList.h"

#include <cstdlib>

cmStringT redirectRecentList(const cmStringT& folder)
{
    setenv("XDG_DATA_HOME", folder.c_str(), 1);
    return cmJoinPath(folder, "recently-used.xbel");
}
