#include "txhost/StatusPoll.h"

#include "common/CommandRunner.h"
#include "common/cmStringCatHelper.h"
#include "txhost/Console.h"

#include <algorithm>
#include <string>
#include <utility>

namespace {

/// Queues a pass. Returns 0, or why the module refuses.
std::int32_t addPath(Host& host, const WatchedDirectory& directory)
{
    const std::int32_t result = host.call("filewatcherAddPath", {directory.path, directory.tool.number, 1});
    if (host.editor().setting(directory.tool.showFileStatusSetting) == 0)
        return statusOutputLimit;  // the module has switched the tool off, and adds no path of it any more
    return result == -1 ? 0 : result;
}

/// How long to wait for `time`, in milliseconds; -1 when it never comes.
std::int32_t millisecondsUntil(StatusPoll::Clock::time_point time)
{
    if (time == StatusPoll::Clock::time_point::max())
        return -1;
    const auto left = std::chrono::ceil<std::chrono::milliseconds>(time - StatusPoll::Clock::now());
    return static_cast<std::int32_t>(std::max<std::chrono::milliseconds::rep>(left.count(), 0));
}

/// "svn in /wc and 3 more directories behind it"
cmStringT awaitedText(const char* tool, cmROStringT directory, std::size_t behind)
{
    cmStringT text = cmCat(tool) + " in " + directory;
    if (behind > 0)
        text += cmStringT(cmCat(" and ") + std::to_string(behind) + (behind == 1 ? " more directory" : " more directories")
                          + " behind it");
    return text;
}

}  // namespace

StatusPoll::StatusPoll(Host& host, const cmArray<WatchedDirectory>& directories, StatusListener listener)
    : m_host(host), m_listener(std::move(listener))
{
    for (const WatchedDirectory& directory : directories)
        add(directory);
    EditorObserver observer;
    observer.passBegan = [this](const cmStringT& path) { beginPass(path); };
    observer.passFailed = [this](const cmStringT& path, const cmStringT& reason) { m_reasons[path] = reason; };
    observer.passEnded = [this](const cmStringT& path, std::int32_t status) {
        const auto directory = m_byPath.find(path);
        if (directory != m_byPath.end() && !console::wasInterrupted())
            endPass(*directory->second, status);
    };
    host.editor().setObserver(observer);
}

StatusPoll::~StatusPoll()
{
    m_host.editor().setObserver({});
}

void StatusPoll::add(const WatchedDirectory& directory)
{
    const WatchedDirectory& added = m_directories.emplace_back(directory);
    const Tool& tool = toolNumbered(added.tool.number);
    m_rounds.try_emplace(tool.number, tool).first->second.directories.push_back(&added);
    m_byPath[added.path] = &added;
}

cmArray<const Tool*> StatusPoll::tools() const
{
    cmArray<const Tool*> found;
    for (const auto& [number, round] : m_rounds)
        found.push_back(&round.tool);
    return found;
}

void StatusPoll::start(const Tool& tool)
{
    Round& round = m_rounds.at(tool.number);
    if (round.files.areAddedToOnly())
        m_host.editor().clearRecords(tool.number);
    if (tool.number == gitTool.number)
        m_host.editor().clearRecords(0);  // those of directories outside
    round.files.beginRound();
    round.current = round.directories.front()->path;
    expectSign(round);
    cmArray<std::pair<const WatchedDirectory*, std::int32_t>> refused;
    for (const WatchedDirectory* directory : round.directories) {
        round.waiting.insert(directory->path);
        if (const std::int32_t status = addPath(m_host, *directory); status != 0)
            refused.emplace_back(directory, status);
    }
    for (const auto& [directory, status] : refused)
        endPass(*directory, status);
}

bool StatusPoll::runUntil(const std::function<bool()>& done, Clock::time_point deadline)
{
    bool isDone = false;
    while (!isDone) {
        const Clock::time_point telling = nextTelling();
        const auto hasReason = [&] { return (isDone = done()) || nextTelling() < telling; };
        m_host.editor().runUntil(hasReason, millisecondsUntil(std::min(deadline, telling)));
        tellWaiting();
        if (Clock::now() >= deadline)
            break;
    }
    return isDone;
}

bool StatusPoll::isWaiting() const
{
    return std::any_of(m_rounds.begin(), m_rounds.end(), [](const auto& round) { return !round.second.waiting.empty(); });
}

cmStringT StatusPoll::awaited() const
{
    cmStringT all("");
    for (const auto& [number, round] : m_rounds) {
        if (round.waiting.empty())
            continue;
        all += all.isEmpty() ? "" : "; ";
        all += awaitedText(round.tool.name, round.current, round.waiting.size() - 1);
    }
    return all;
}

cmArray<const WatchedDirectory*> StatusPoll::unanswered() const
{
    cmArray<const WatchedDirectory*> directories;
    for (const WatchedDirectory& directory : m_directories) {
        if (m_rounds.at(directory.tool.number).waiting.contains(directory.path))
            directories.push_back(&directory);
    }
    return directories;
}

FileStatuses StatusPoll::takeUnreported()
{
    collectChanges();
    FileStatuses files;
    for (auto& [number, round] : m_rounds)
        files.merge(round.files.takeOthers());
    return files;
}

void StatusPoll::expectSign(Round& round)
{
    round.tellAt = Clock::now() + std::chrono::milliseconds(m_host.options().patienceMs);
}

void StatusPoll::beginPass(const cmStringT& path)
{
    const auto directory = m_byPath.find(path);
    if (directory != m_byPath.end())
        roundOf(*directory->second).current = path;
    if (m_listener.passBegan)
        m_listener.passBegan();
}

void StatusPoll::endPass(const WatchedDirectory& directory, std::int32_t status)
{
    Round& round = roundOf(directory);
    if (round.waiting.erase(directory.path) == 0)
        return;
    if (round.tellAt)  // it was not late
        round.told.erase(directory.path);
    expectSign(round);
    collectChanges();
    reportPass(directory, status);
    if (status == statusOutputLimit) {  // the tool's thread has ended for good, so its other directories fail as well
        for (const cmStringT& other : std::exchange(round.waiting, {}))
            reportPass(*m_byPath.at(other), status);
    }
    if (round.waiting.empty())
        endRound(round);
}

void StatusPoll::reportPass(const WatchedDirectory& directory, std::int32_t status)
{
    Round& round = roundOf(directory);
    PassAnswer answer{directory, false, {}, round.files.takeBelow(directory.path)};
    const auto reason = m_reasons.extract(directory.path);
    if (status != 0 || (reason && m_host.options().updates))
        answer.failure = failureOf(status == 0 ? Failure::server : status, reason ? reason.mapped() : cmStringT(), directory.path,
                                   round.tool.name);
    if (status == 0) {
        const std::optional<TXVCRECORD> record = m_host.editor().record(directory.path);
        answer.isOutside = record && record->state == txVCStateOutsideRepository;
    }
    round.files.endPass(directory.path, status != 0);
    m_listener.passEnded(answer);
}

void StatusPoll::endRound(Round& round)
{
    round.tellAt.reset();
    FileStatuses files = round.files.takeOthers();
    files.merge(round.files.takeGone());
    m_listener.roundEnded(round.tool, files);
}

/// Sorts what the module has written by tool.
void StatusPoll::collectChanges()
{
    for (const auto& [path, record] : m_host.editor().takeChangedRecords()) {
        const auto round = m_rounds.find(toolNumbered(record.tool).number);
        if (round != m_rounds.end())
            round->second.files.change(path, record, m_host.options().updates);
    }
}

StatusPoll::Clock::time_point StatusPoll::nextTelling() const
{
    Clock::time_point next = Clock::time_point::max();
    for (const auto& [number, round] : m_rounds)
        next = std::min(next, round.tellAt.value_or(next));
    return next;
}

void StatusPoll::tellWaiting()
{
    for (auto& [number, round] : m_rounds) {
        if (!round.tellAt || *round.tellAt > Clock::now())
            continue;
        round.tellAt.reset();
        if (round.told.insert(round.current).second)
            console::printError(
                cmStringT(cmCat("waiting for ") + awaitedText(round.tool.name, round.current, round.waiting.size() - 1)));
    }
}
