#pragma once

#include "common/cmString.h"
#include "filewatcher/git/commits/GitDateTime.h"

/// "YYYY-MM-DD HH:mm:ss"; null for an unset time.
cmStringT dateTimeText(const GitDateTime& time);
