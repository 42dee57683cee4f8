#include "txhost/browse/RepositoryWatch.h"

#include "common/CommandRunner.h"
#include "common/cmPath.h"
#include "common/cmStringCatHelper.h"
#include "txhost/Failure.h"
#include "txhost/browse/RefNames.h"

#include <algorithm>
#include <chrono>
#include <new>
#include <utility>

namespace {

using Clock = std::chrono::steady_clock;
constexpr std::uint32_t shortestPauseMs = 2000;
constexpr std::int64_t pausePerReading = 10;  // of a repository with so many refs that reading them takes long

}  // namespace

RepositoryWatch::RepositoryWatch(cmStringT git, cmStringT repository, std::function<void()> onNews)
    : m_git(std::move(git)), m_repository(std::move(repository)), m_onNews(std::move(onNews))
{
    setStopEvent(&m_stop);
    if (start() != 0)
        throw HostError("no thread can be had");
}

RepositoryWatch::~RepositoryWatch()
{
    requestStop();
    join();
}

std::optional<RepositoryPlace> RepositoryWatch::place()
{
    const cmMutexLock hold(m_lock);
    return m_place;
}

std::shared_ptr<const cmArray<GitRefName>> RepositoryWatch::names()
{
    const cmMutexLock hold(m_lock);
    return m_names;
}

bool RepositoryWatch::haveMoved()
{
    const cmMutexLock hold(m_lock);
    return m_haveMoved;
}

std::int32_t RepositoryWatch::run()
{
    std::uint32_t pauseMs = 0;
    while (m_stop.wait(pauseMs) == cmWaitTimeout) {
        const Clock::time_point begin = Clock::now();
        look();
        const auto passed = std::chrono::duration_cast<std::chrono::milliseconds>(Clock::now() - begin).count();
        pauseMs = std::max(shortestPauseMs, static_cast<std::uint32_t>(passed * pausePerReading));
    }
    return 0;
}

void RepositoryWatch::look()
{
    try {
        m_hasPlace = m_hasPlace || findPlace();
        readRefs();
    } catch (const std::bad_alloc&) {
        // The next look may find memory.
    }
}

/// Returns whether git has come to its end.
bool RepositoryWatch::ask(cmROStringT arguments, cmStringT& output)
{
    output = "";
    CaptureControl control;
    control.stopRequested = [this] { return stopRequested(); };
    const CaptureResult result = captureCommand(cmStringT(cmCat("\"") + m_git + "\" " + arguments), spawnScannedCommand,
                                                m_repository, control, [&output](cmROStringT bytes) { output += bytes; });
    return result.status == 0 && !result.stopped;
}

/// Returns whether git has told the place. If not, the rest can do with what was browsed.
bool RepositoryWatch::findPlace()
{
    cmStringT output;
    if (!ask("rev-parse --is-inside-work-tree --git-path index --show-toplevel", output))
        output = "";
    if (stopRequested())
        return false;
    cmROStringT lines = output;
    const cmROStringT isInside = cmWithoutLineEnd(cmTakeUntil(lines, '\n'));
    const cmROStringT index = cmWithoutLineEnd(cmTakeUntil(lines, '\n'));
    RepositoryPlace place{m_repository};
    place.isBare = isInside == "false";
    if (isInside == "true") {
        place.root = cmNativeSeparators(cmWithoutLineEnd(lines));
        place.index = cmIsAbsolutePath(index) ? cmNativeSeparators(index) : cmJoinPath(m_repository, cmNativeSeparators(index));
    }
    {
        const cmMutexLock hold(m_lock);
        m_place = place;
    }
    m_onNews();
    return !isInside.empty();
}

void RepositoryWatch::readRefs()
{
    cmStringT refs;
    if (!ask("show-ref --head --dereference", refs))
        return;
    const bool isFirst = !m_firstRefs;
    if (isFirst)
        m_firstRefs = refs;
    const bool haveMoved = refs != *m_firstRefs;
    {
        const cmMutexLock hold(m_lock);
        if (isFirst)
            m_names = std::make_shared<const cmArray<GitRefName>>(refNames(refs));
        else if (haveMoved == std::exchange(m_haveMoved, haveMoved))
            return;
    }
    m_onNews();
}
