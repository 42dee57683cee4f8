#include "filewatcher/reload/FileDateThread.h"

#include "common/cmDateTime.h"
#include "txapi/txapi.h"

#include <algorithm>
#include <atomic>
#include <new>
#include <utility>

namespace {

constexpr FileDateSource systemSource{&cmReadFileItem, &cmTickCount};
std::atomic<const FileDateSource*> currentSource{&systemSource};

/// Reads the date of the file `result.fileName` into the other fields; false when its file system has no file times.
bool readFileDate(FILE_DATE_THREAD_OUTPUT_INFO& result)
{
    tamarin::TMString path(result.fileName);
    std::int32_t kind = txPathKind(path);
    if (kind == txPathRelative) {
        txAbsolute(tamarin::TMString(result.fileName), tamarin::TMString(""), 1, path);
        kind = txPathKind(path);
    }
    if (!txFileSupportsGetFileTime(path))
        return false;
    const FileDateSource& source = *currentSource.load();
    const std::uint32_t start = source.tickCount();
    const CMFD_ITEM item = source.readItem(path.getCMString());
    const std::uint32_t end = source.tickCount();
    result.elapsedMs = end < start ? 0 : static_cast<std::int32_t>(end - start);  // the count wrapped around
    if (item.state == cmItemState::found)
        result.item = item;
    result.readOnlyFlag = kind != txPathLocal || (result.item.attributes & cmAttributeReadOnly) ? 1 : 0;
    return true;
}

class FileDateThread : public cmThread {
public:
    explicit FileDateThread(FileDateData& data) : m_data(data) { setName("File Date Thread"); }

    std::int32_t run() override
    {
        while (!stopRequested()) {
            m_data.waitForWork();
            FILE_DATE_THREAD_INPUT_INFO request;
            while (!stopRequested() && m_data.takeRequest(request)) {
                FILE_DATE_THREAD_OUTPUT_INFO result;
                result.fileName = std::move(request.fileName);
                if (readFileDate(result))
                    m_data.record(std::move(result));
            }
        }
        return 0;
    }

private:
    FileDateData& m_data;
};

}  // namespace

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
    cmThread* thread = nullptr;
    {
        cmMutexLock hold(fileDateLock);
        thread = theInstance ? theInstance->fileDateThread.get() : nullptr;
        if (thread)
            thread->requestStop();
    }
    if (thread)
        thread->join();  // without the lock, which the thread takes before it ends
    cmMutexLock hold(fileDateLock);
    delete theInstance;
    theInstance = nullptr;
}

void FileDateData::setSource(const FileDateSource* source)
{
    currentSource = source ? source : &systemSource;
}

void FileDateData::setSlowThreshold(std::int32_t ms)
{
    cmMutexLock hold(fileDateLock);
    slowThresholdMs = ms;
}

bool FileDateData::startThread()
{
    cmMutexLock hold(fileDateLock);
    if (!fileDateThread) {
        fileDateThread = std::make_unique<FileDateThread>(*this);
        fileDateThread->setStopEvent(&workEvent);
    }
    return fileDateThread->isRunning() || fileDateThread->start() == 0;
}

bool FileDateData::enqueue(cmArray<FILE_DATE_THREAD_INPUT_INFO> requests)
{
    cmMutexLock hold(fileDateLock);
    bool queued = false;
    for (FILE_DATE_THREAD_INPUT_INFO& request : requests) {
        if (slowFiles.contains(request.fileName))
            continue;
        inputQueue.push(std::move(request));
        queued = true;
    }
    if (!queued)
        return false;
    doneEvent.reset();
    workEvent.set();
    return true;
}

void FileDateData::waitUntilDone(std::int32_t budgetMs)
{
    doneEvent.wait(static_cast<std::uint32_t>(std::max(budgetMs, 0)));
}

bool FileDateData::takeResult(FILE_DATE_THREAD_OUTPUT_INFO& result)
{
    cmMutexLock hold(fileDateLock);
    return outputQueue.pop(result);
}

cmArray<cmStringT> FileDateData::slowFileNames()
{
    cmMutexLock hold(fileDateLock);
    cmArray<cmStringT> names;
    for (const auto& [name, slow] : slowFiles)
        names.push_back(name);
    return names;
}

bool FileDateData::takeRequest(FILE_DATE_THREAD_INPUT_INFO& request)
{
    // Both events change under the lock. Otherwise a request queued between `pop` and `reset` would be lost.
    cmMutexLock hold(fileDateLock);
    if (inputQueue.pop(request))
        return true;
    workEvent.reset();
    doneEvent.set();
    return false;
}

void FileDateData::record(FILE_DATE_THREAD_OUTPUT_INFO result)
{
    cmMutexLock hold(fileDateLock);
    if (result.elapsedMs < slowThresholdMs)
        outputQueue.push(std::move(result));
    else
        slowFiles.emplace(result.fileName, true);
}
