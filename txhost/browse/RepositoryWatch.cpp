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
constexpr std::int32_t noRefs = 1;            // an exit code of show-ref
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

/// Returns git's exit code; nothing when it has not come to its end.
std::optional<std::int32_t> RepositoryWatch::ask(cmROStringT arguments, cmStringT& output)
{
    output = "";
    CaptureControl control;
    control.stopRequested = [this] { return stopRequested(); };
    const CaptureResult result = captureCommand(cmStringT(cmCat("\"") + m_git + "\" " + arguments), spawnScannedCommand,
                                                m_repository, control, [&output](cmROStringT bytes) { output += bytes; });
    return result.status == 0 && !result.stopped ? std::optional(result.exitCode) : std::nullopt;
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

/// HEAD, the branches, and the tags with what they lead to; nothing when git cannot tell them.
std::optional<cmStringT> RepositoryWatch::refs()
{
    cmStringT refs;
    const std::optional<std::int32_t> code = ask("show-ref --head --dereference", refs);
    if (!code || *code == 0 || *code == noRefs)
        return code ? std::optional(refs) : std::nullopt;
    // One broken ref ends show-ref, while for-each-ref lists all others. But it has no HEAD, and a lost object ends it when it is
    // to tell what tags lead to.
    cmROStringT list = refs;
    const cmROStringT first = cmTakeUntil(list, '\n');
    const cmStringT head = first.ends_with(" HEAD") ? cmStringT(cmCat(first) + "\n") : cmStringT("");
    for (const cmROStringT dereferenced : {"%0a%(*objectname) %(refname)^{}", ""}) {
        const cmStringT format = cmCat("%(objectname) %(refname)") + dereferenced;
        if (ask(cmStringT(cmCat("for-each-ref \"--format=") + format + "\""), refs) == 0)
            return cmStringT(cmCat(head) + refs);
    }
    return std::nullopt;
}

void RepositoryWatch::readRefs()
{
    const std::optional<cmStringT> refs = this->refs();
    if (!refs)
        return;
    const bool isFirst = !m_firstRefs;
    if (isFirst)
        m_firstRefs = *refs;
    const bool haveMoved = *refs != *m_firstRefs;
    {
        const cmMutexLock hold(m_lock);
        if (isFirst)
            m_names = std::make_shared<const cmArray<GitRefName>>(refNames(*refs));
        else if (haveMoved == std::exchange(m_haveMoved, haveMoved))
            return;
    }
    m_onNews();
}
