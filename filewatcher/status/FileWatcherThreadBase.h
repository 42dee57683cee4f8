#pragma once

#include "common/cmThread.h"
#include "filewatcher/status/WatchQueue.h"

#include <functional>

/// Base of the version-control status threads: a queue of watched paths, and the flags that the editor sets. The editor's
/// thread fills the queue, the derived thread takes entries from it. An entry is gone once it is taken; the editor adds its
/// path again when it wants another pass. Any thread may call any public operation.
class FileWatcherThreadBase : public cmThread {
public:
    FileWatcherThreadBase();
    ~FileWatcherThreadBase() override;

    /// Returns 0 at once; the derived class supplies the loop.
    std::int32_t run() override;
    /// Whether the thread has its settings.
    virtual bool isConfigured();

    /// Appends an entry and wakes the thread. A path that is already in the queue keeps its old entry.
    void addPath(cmROStringT path, cmROStringT context, bool pathFlag, bool contextFlag);
    /// Index of the first entry with this path, or -1. Paths are compared byte by byte.
    std::int32_t findPath(cmROStringT path);
    /// Removes the entry with this path, if there is one, and what the thread itself has deferred of it. What already goes on for
    /// the deferred one ends soon.
    void removePath(cmROStringT path);
    /// The same for all paths.
    void removeAllPaths();
    /// Moves the first entry into `entry`; false when the queue is empty.
    bool takeFirstPath(WatchEntry& entry);

    void setSuspended(bool on);
    bool isSuspended();

protected:
    /// Sleeps until a path is added or a stop is requested, at most 1000 ms. Returns at once when that happened since the last
    /// call.
    void sleepIdle();
    void setConfigured();
    /// For what the thread wants to do itself with an entry, once no path waits: a second queue like the first one. An entry
    /// stays there while the work on it goes on; work whose entry is gone must end. An entry whose path was removed since
    /// takeFirstPath is not deferred.
    void deferEntry(const WatchEntry& entry);
    bool isDeferred(cmROStringT path);
    void removeDeferred(cmROStringT path);
    /// Copies the first deferred entry that `accepts` takes; false when there is none. `accepts` must not use the queues.
    bool findDeferred(const std::function<bool(const WatchEntry&)>& accepts, WatchEntry& entry);
    /// The event that `sleepIdle` waits for.
    cmThreadEvent& wakeEvent() { return m_wakeEvent; }

private:
    cmMutex listLock;
    bool suspended CM_GUARDED_BY(stateLock) = false;
    cmMutex stateLock;
    bool configured CM_GUARDED_BY(stateLock) = false;
    WatchQueue m_paths CM_GUARDED_BY(listLock);
    WatchQueue m_deferred CM_GUARDED_BY(listLock);
    /// The path that was taken last, without a trailing separator; null when it was removed since.
    cmStringT m_taken CM_GUARDED_BY(listLock);
    cmThreadEvent m_wakeEvent{true, false};
};
