#pragma once

#include "common/cmArray.h"
#include "common/cmString.h"

#include <cstddef>

/// The application identity under which the system lists the documents.
inline constexpr char recentDocumentsApplication[] = "TamarinRecentFiles";

/// A list of recently used documents. For the editor's thread only.
class RecentDocuments {
public:
    virtual ~RecentDocuments() = default;
    /// Prepares the calling thread and process. Call once, before the first `add`. Failures are ignored.
    virtual void setUp() = 0;
    /// Adds files in the given order, the newest last. Skips files that the system cannot name. Returns how many were added, 0
    /// when the list cannot be changed. May block on the disk.
    virtual std::size_t add(const cmArray<cmStringT>& paths) = 0;
};

/// The list of this system: on Windows the shell's, elsewhere the desktop's file of recently used documents.
RecentDocuments& systemRecentDocuments();
/// For tests: makes the registered functions use `documents`, not yet set up, from now on; null restores the system's list. Not
/// owned.
void setRecentDocuments(RecentDocuments* documents);
