#pragma once

#include "filewatcher/recent/RecentDocuments.h"

/// For tests: where recent files go from now on, as if nothing had been set up there; null for the system's list.
void setRecentDocuments(RecentDocuments* documents);
