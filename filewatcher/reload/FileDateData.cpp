#include "filewatcher/reload/FileDateData.h"

#include "filewatcher/reload/FileDateThread.h"

#include <algorithm>
#include <new>
#include <utility>

cmMutex FileDateData::fileDateLock;
FileDateData* FileDateData::theInstance = nullptr;

FileDateData* FileDateData::instance()
{
    cmMutexLock hold(fileDateLock);
    if (!theInstance)
        theInstance = new (std::nothrow) FileDateData;
    return theInstance;
}

void FileDateData::stopInstance()
{
    cmArray<cmThread*> threads;
    {
        cmMutexLock hold(fileDateLock);
        if (!theInstance)
            return;
        for (const auto& thread : theInstance->hanging)
            threads.push_back(thread.get());
        if (theInstance->reader)
            threads.push_back(theInstance->reader.get());
        for (cmThread* thread : threads)
            thread->requestStop();
    }
    for (cmThread* thread : threads)
        thread->join();  // without the lock, which the thread takes before it ends
    cmMutexLock hold(fileDateLock);
    delete theInstance;
    theInstance = nullptr;
}

void FileDateData::setSlowThreshold(std::int32_t ms)
{
    cmMutexLock hold(fileDateLock);
    slowThresholdMs = ms;
}

bool FileDateData::startReader()
{
    cmMutexLock hold(fileDateLock);
    return ensureReader();
}

bool FileDateData::enqueue(cmArray<FILE_DATE_THREAD_INPUT_INFO> requests)
{
    cmMutexLock hold(fileDateLock);
    cmDictionary<cmROStringT, bool> waiting{{reading.view(), true}};
    waiting.reserve(requests.size() + 1);
    for (const FILE_DATE_THREAD_INPUT_INFO& queued : inputQueue)
        waiting.emplace(queued.fileName.view(), true);
    bool anyWaits = false;
    for (FILE_DATE_THREAD_INPUT_INFO& request : requests) {
        if (slowFiles.contains(request.fileName))
            continue;
        anyWaits = true;
        if (waiting.emplace(request.fileName.view(), true).second)  // the bytes stay where they are when the string is moved
            inputQueue.push(std::move(request));
    }
    if (!anyWaits)
        return false;
    doneEvent.reset();
    workEvent.set();
    return true;
}

void FileDateData::waitUntilDone(std::int32_t budgetMs)
{
    const FileDateSource& source = fileDateSource();
    const auto budget = static_cast<std::uint32_t>(std::max(budgetMs, 0));
    const std::uint32_t start = source.tickCount();
    for (;;) {
        std::uint32_t limit = 0;
        {
            cmMutexLock hold(fileDateLock);
            limit = giveUpOverdueRead();
        }
        const std::uint32_t elapsed = source.tickCount() - start;
        if (limit == 0 || elapsed >= budget || source.wait(doneEvent, std::min(limit, budget - elapsed)) != cmWaitTimeout)
            return;
    }
}

std::deque<FILE_DATE_THREAD_OUTPUT_INFO> FileDateData::takeResults()
{
    cmMutexLock hold(fileDateLock);
    return outputQueue.takeAll();
}

cmArray<cmStringT> FileDateData::slowFileNames()
{
    cmMutexLock hold(fileDateLock);
    giveUpOverdueRead();
    cmArray<cmStringT> names;
    for (const auto& [name, slow] : slowFiles)
        names.push_back(name);
    return names;
}

bool FileDateData::takeRequest(FILE_DATE_THREAD_INPUT_INFO& request)
{
    // Both events change under the lock. Otherwise a request queued between `pop` and `reset` would be lost.
    cmMutexLock hold(fileDateLock);
    if (inputQueue.pop(request)) {
        reading.assign(request.fileName);
        readingSince = fileDateSource().tickCount();
        return true;
    }
    workEvent.reset();
    doneEvent.set();
    return false;
}

bool FileDateData::endRead(const cmThread& thread, std::optional<FILE_DATE_THREAD_OUTPUT_INFO> result)
{
    cmMutexLock hold(fileDateLock);
    if (&thread != reader.get())
        return false;
    if (result && result->elapsedMs < slowThresholdMs)
        outputQueue.push(std::move(*result));
    else if (result)
        slowFiles.emplace(result->fileName, true);
    reading.clear();
    return true;
}

/// Removes hanging threads that have ended, and starts a reader unless there is one or too many reads hang. Returns false when it
/// cannot be started.
bool FileDateData::ensureReader()
{
    std::erase_if(hanging, [](const auto& thread) { return !thread->isRunning(); });
    if ((reader && reader->isRunning()) || hanging.size() == maxHangingReads)
        return true;
    if (!reader) {
        reader = std::make_unique<FileDateThread>(*this);
        reader->setStopEvent(&workEvent);
    }
    return reader->start() == 0;
}

/// Gives up the current read if that has taken the slow threshold, or a millisecond when the threshold is shorter. Returns after
/// how many milliseconds to look again: 0 when no reader runs.
std::uint32_t FileDateData::giveUpOverdueRead()
{
    const auto limit = static_cast<std::uint32_t>(std::max(slowThresholdMs, 1));
    // The clock is read under the lock: a read that began after it would seem to have taken 49 days.
    const std::uint32_t taken = reading.isEmpty() ? 0 : fileDateSource().tickCount() - readingSince;
    if (taken >= limit) {
        slowFiles.emplace(reading, true);
        reading.clear();
        hanging.push_back(std::move(reader));
        ensureReader();
    }
    if (!reader || !reader->isRunning())
        return 0;
    return taken < limit ? limit - taken : limit;
}
