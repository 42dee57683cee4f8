#pragma once

#include "common/cmArray.h"
#include "common/cmThread.h"

/// A directory that waits for one status pass.
struct WatchEntry {
    cmStringT path;
    cmStringT context;  ///< the editor's own word with the request
    bool pathFlag = false;
    bool contextFlag = false;
};

/// Base of the version-control status threads: a queue of watched paths, which the editor's thread fills and the
/// derived thread drains, and the flags that the editor sets. An entry is gone once it is taken; the editor adds
/// its path again when it wants another pass. Any thread may call any operation.
class FileWatcherThreadBase : public cmThread {
public:
    FileWatcherThreadBase();
    ~FileWatcherThreadBase() override;

    /// The derived class has the loop; this one returns 0 at once.
    std::int32_t run() override;
    /// Whether the thread was given its settings.
    virtual bool isConfigured();

    /// Appends an entry and wakes the thread. A path that is listed already keeps its old entry.
    void addPath(cmROStringT path, cmROStringT context, bool pathFlag, bool contextFlag);
    /// Index of the first entry whose path is the same to the byte, or -1.
    std::int32_t findPath(cmROStringT path);
    void removePath(cmROStringT path);
    void removeAllPaths();
    /// Moves the first entry into `entry`; false when the list is empty.
    bool takeFirstPath(WatchEntry& entry);

    void setSuspended(bool on);
    bool isSuspended();

protected:
    /// Sleeps until a path is added or a stop is requested, at most 1000 ms.
    void sleepIdle();
    void setConfigured();

private:
    std::int32_t indexOf(cmROStringT path) CM_REQUIRES(listLock);

    cmMutex listLock;
    bool suspended CM_GUARDED_BY(stateLock) = false;
    cmMutex stateLock;
    bool configured CM_GUARDED_BY(stateLock) = false;
    cmArray<WatchEntry> paths CM_GUARDED_BY(listLock);
    cmThreadEvent wakeEvent{true, false};
};
