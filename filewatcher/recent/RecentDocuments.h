#pragma once

#include "common/cmArray.h"
#include "common/cmString.h"

#include <cstddef>

/// The application under which the system lists our documents.
inline constexpr char recentDocumentsApplication[] = "TamarinRecentFiles";

/// The system's list of recent documents, as far as this platform has one. For the editor's thread only.
class RecentDocuments {
public:
    virtual ~RecentDocuments() = default;
    /// Once, before the first `add`. What fails is of no account.
    virtual void setUp() = 0;
    /// Adds files, the newest last; those that the system cannot name are passed over. Returns how many it took.
    virtual std::size_t add(const cmArray<cmStringT>& paths) = 0;
};

/// The one of this system.
RecentDocuments& systemRecentDocuments();
