#include "txhost/RecentList.h"

cmStringT redirectRecentList(const cmStringT&)
{
    return {};
}
