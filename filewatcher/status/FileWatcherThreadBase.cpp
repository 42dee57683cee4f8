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
        if (indexOf(path) < 0)
            m_paths.push_back({path, context, pathFlag, contextFlag});
    }
    m_wakeEvent.set();
}

std::int32_t FileWatcherThreadBase::findPath(cmROStringT path)
{
    cmMutexLock hold(listLock);
    return indexOf(path);
}

std::int32_t FileWatcherThreadBase::indexOf(cmROStringT path)
{
    const auto found =
        std::find_if(m_paths.begin(), m_paths.end(), [path](const WatchEntry& entry) { return entry.path == path; });
    return found == m_paths.end() ? -1 : static_cast<std::int32_t>(found - m_paths.begin());
}

void FileWatcherThreadBase::removePath(cmROStringT path)
{
    cmMutexLock hold(listLock);
    const std::int32_t index = indexOf(path);
    if (index >= 0)
        m_paths.erase(m_paths.begin() + index);
}

void FileWatcherThreadBase::removeAllPaths()
{
    cmMutexLock hold(listLock);
    m_paths.clear();
}

bool FileWatcherThreadBase::takeFirstPath(WatchEntry& entry)
{
    cmMutexLock hold(listLock);
    if (m_paths.empty())
        return false;
    entry = std::move(m_paths.front());
    m_paths.erase(m_paths.begin());
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
    if (m_wakeEvent.wait(idleSleepMs) == cmWaitFailed)
        cmThread::sleep(idleSleepMs);  // the system could not create the event
    // No change is lost: it was made before the event was set, and the caller looks for changes after this reset.
    m_wakeEvent.reset();
}
