#pragma once

#include "common/cmString.h"

/// Sends the list of recent documents of this process to a file in `folder`, where the system keeps it in one, so that a scratch
/// file does not show up on the user's desktop. Returns that file; null where the list is the system's own affair.
cmStringT redirectRecentList(const cmStringT& folder);
