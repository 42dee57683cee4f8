#include "filewatcher/status/FileWatcherThreadBase.h"

#include <algorithm>
#include <utility>

namespace {

constexpr std::uint32_t idleSleepMs = 1000;
constexpr std::uint8_t lowestPriority = 1;

}  // namespace

FileWatcherThreadBase::FileWatcherThreadBase()
{
    setName("File Watcher Thread");
    setPriority(lowestPriority);
    setStopEvent(&wakeEvent);
}

FileWatcherThreadBase::~FileWatcherThreadBase()
{
    setStopEvent(nullptr);
}

std::int32_t FileWatcherThreadBase::run()
{
    return 0;
}

bool FileWatcherThreadBase::isConfigured()
{
    cmMutexLock hold(stateLock);
    return configured;
}

void FileWatcherThreadBase::setConfigured()
{
    cmMutexLock hold(stateLock);
    configured = true;
}

void FileWatcherThreadBase::addPath(cmROStringT path, cmROStringT context, bool pathFlag, bool contextFlag)
{
    {
        cmMutexLock hold(listLock);
        if (indexOf(path) < 0)
            paths.push_back({path, context, pathFlag, contextFlag});
    }
    wakeEvent.set();
}

std::int32_t FileWatcherThreadBase::findPath(cmROStringT path)
{
    cmMutexLock hold(listLock);
    return indexOf(path);
}

std::int32_t FileWatcherThreadBase::indexOf(cmROStringT path)
{
    const auto found = std::find_if(paths.begin(), paths.end(), [path](const WatchEntry& entry) { return entry.path == path; });
    return found == paths.end() ? -1 : static_cast<std::int32_t>(found - paths.begin());
}

void FileWatcherThreadBase::removePath(cmROStringT path)
{
    cmMutexLock hold(listLock);
    const std::int32_t index = indexOf(path);
    if (index >= 0)
        paths.erase(paths.begin() + index);
}

void FileWatcherThreadBase::removeAllPaths()
{
    cmMutexLock hold(listLock);
    paths.clear();
}

bool FileWatcherThreadBase::takeFirstPath(WatchEntry& entry)
{
    cmMutexLock hold(listLock);
    if (paths.empty())
        return false;
    entry = std::move(paths.front());
    paths.erase(paths.begin());
    return true;
}

void FileWatcherThreadBase::setSuspended(bool on)
{
    cmMutexLock hold(stateLock);
    suspended = on;
}

bool FileWatcherThreadBase::isSuspended()
{
    cmMutexLock hold(stateLock);
    return suspended;
}

void FileWatcherThreadBase::sleepIdle()
{
    if (wakeEvent.wait(idleSleepMs) == cmWaitFailed)
        cmThread::sleep(idleSleepMs);  // the system had no event to give
    // Whoever set the event did so after the change that it stands for, and every cycle looks for changes anew.
    wakeEvent.reset();
}
