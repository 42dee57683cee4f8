#pragma once

#include "common/cmDictionary.h"
#include "common/cmString.h"

#include <cstdint>
#include <functional>
#include <list>

/// A directory that waits for one status pass.
struct WatchEntry {
    cmStringT path;
    cmStringT context;         ///< text that the editor attached to the request
    bool pathFlag = false;     ///< the flag argument of filewatcherAddPath
    bool contextFlag = false;  ///< the editor's flag for the request
};

/// Entries in the order in which they were added, at most one for each path; paths are compared byte by byte. Adding, removing
/// and taking one cost the same however many wait. One thread at a time.
class WatchQueue {
public:
    /// Appends an entry. A path that is already in the queue keeps its old entry.
    void add(WatchEntry entry);
    /// Index of the entry with this path, or -1; counts the entries before it.
    std::int32_t find(cmROStringT path) const;
    bool contains(cmROStringT path) const { return m_index.contains(path); }
    /// Copies the first entry that `accepts` takes into `entry`; false when there is none.
    bool findFirst(const std::function<bool(const WatchEntry&)>& accepts, WatchEntry& entry) const;
    /// Removes the entry with this path, if there is one.
    void remove(cmROStringT path);
    void clear();
    /// Moves the first entry into `entry`; false when the queue is empty.
    bool takeFirst(WatchEntry& entry);

private:
    using Entries = std::list<WatchEntry>;

    Entries m_entries;
    cmDictionary<cmROStringT, Entries::iterator> m_index;  ///< each entry by a view of its own path
};
