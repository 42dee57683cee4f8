#include "filewatcher/reload/FileDateThread.h"

#include "common/cmDateTime.h"
#include "txapi/txapi.h"

#include <algorithm>
#include <atomic>
#include <new>
#include <utility>

namespace {

cmMutex fileDateLock;
FileDateData* theData CM_GUARDED_BY(fileDateLock) = nullptr;
std::atomic<FileItemReader> reader{&cmReadFileItem};

/// Reads one file's date. False when its file system has none to give.
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
    const std::uint32_t start = cmTickCount();
    const CMFD_ITEM item = reader.load()(path.getCMString());
    const std::uint32_t end = cmTickCount();
    result.elapsedMs = end < start ? 0 : static_cast<std::int32_t>(end - start);
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

FileDateData* FileDateData::instance()
{
    cmMutexLock hold(fileDateLock);
    if (!theData)
        theData = new (std::nothrow) FileDateData;
    return theData;
}

void FileDateData::stopInstance()
{
    FileDateData* data = nullptr;
    {
        cmMutexLock hold(fileDateLock);
        data = theData;
        if (data && data->thread)
            data->thread->requestStop();
    }
    if (data && data->thread)
        data->thread->join();
    cmMutexLock hold(fileDateLock);
    delete theData;
    theData = nullptr;
}

void FileDateData::setReader(FileItemReader newReader)
{
    reader = newReader ? newReader : &cmReadFileItem;
}

void FileDateData::setSlowThreshold(std::int32_t ms)
{
    cmMutexLock hold(fileDateLock);
    slowThresholdMs = ms;
}

bool FileDateData::enqueue(cmArray<FILE_DATE_THREAD_INPUT_INFO> requests)
{
    cmMutexLock hold(fileDateLock);
    if (!thread) {
        thread = std::make_unique<FileDateThread>(*this);
        thread->setStopEvent(&workEvent);
    }
    if (!thread->isRunning())
        thread->start();
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
    // The events change while the lock is held: between the look at the queue and the reset a request could be lost.
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
