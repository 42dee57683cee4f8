#pragma once

#include "txhost/browse/BrowseData.h"

/// The names in git's list of refs with HEAD and with what tags lead to (`show-ref --head --dereference`; lines without a hash
/// are passed over): HEAD, the branches and the tags, in this order, each kind by name. Pure function.
cmArray<GitRefName> refNames(cmROStringT list);
