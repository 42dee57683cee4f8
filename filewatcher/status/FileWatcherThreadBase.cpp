#include "filewatcher/status/FileWatcherThreadBase.h"

#include "common/cmPath.h"

namespace {

constexpr std::uint32_t idleSleepMs = 1000;
constexpr std::uint8_t lowestPriority = 1;

}  // namespace

FileWatcherThreadBase::FileWatcherThreadBase()
{
    setName("File Watcher Thread");
    setPriority(lowestPriority);
    setStopEvent(&m_wakeEvent);
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
        m_paths.add({path, context, pathFlag, contextFlag});
    }
    m_wakeEvent.set();
}

std::int32_t FileWatcherThreadBase::findPath(cmROStringT path)
{
    cmMutexLock hold(listLock);
    return m_paths.find(path);
}

void FileWatcherThreadBase::removePath(cmROStringT path)
{
    cmMutexLock hold(listLock);
    m_paths.remove(path);
    const cmROStringT deferred = cmWithoutTrailingSeparator(path);
    m_deferred.remove(deferred);
    if (m_taken == deferred)
        m_taken = {};
}

void FileWatcherThreadBase::removeAllPaths()
{
    cmMutexLock hold(listLock);
    m_paths.clear();
    m_deferred.clear();
    m_taken = {};
}

bool FileWatcherThreadBase::takeFirstPath(WatchEntry& entry)
{
    cmMutexLock hold(listLock);
    if (!m_paths.takeFirst(entry))
        return false;
    m_taken = cmWithoutTrailingSeparator(entry.path);
    return true;
}

void FileWatcherThreadBase::deferEntry(const WatchEntry& entry)
{
    cmMutexLock hold(listLock);
    if (m_taken == entry.path)
        m_deferred.add(entry);
}

bool FileWatcherThreadBase::isDeferred(cmROStringT path)
{
    cmMutexLock hold(listLock);
    return m_deferred.contains(path);
}

void FileWatcherThreadBase::removeDeferred(cmROStringT path)
{
    cmMutexLock hold(listLock);
    m_deferred.remove(path);
}

bool FileWatcherThreadBase::findDeferred(const std::function<bool(const WatchEntry&)>& accepts, WatchEntry& entry)
{
    cmMutexLock hold(listLock);
    return m_deferred.findFirst(accepts, entry);
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
    if (m_wakeEvent.wait(idleSleepMs) == cmWaitFailed)
        cmThread::sleep(idleSleepMs);  // the system could not create the event
    // No change is lost: it was made before the event was set, and the caller looks for changes after this reset.
    m_wakeEvent.reset();
}
