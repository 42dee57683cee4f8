#pragma once

#include "common/CMFD_ITEM.h"
#include "common/cmArray.h"
#include "common/cmDictionary.h"
#include "common/cmQueue.h"
#include "common/cmString.h"
#include "common/cmThread.h"

#include <cstdint>
#include <memory>

/// A file whose date the editor asks for. The two numbers are the editor's own.
struct FILE_DATE_THREAD_INPUT_INFO {
    cmStringT fileName;
    std::int32_t arg1 = 0;
    std::int32_t arg2 = 0;
};

/// What the thread found out about it.
struct FILE_DATE_THREAD_OUTPUT_INFO {
    cmStringT fileName;
    CMFD_ITEM item;  ///< empty when there is no such file or it could not be read
    std::int32_t elapsedMs = 0;
    std::int32_t readOnlyFlag = 0;  ///< 1 for a file that is read-only or not on a local file system
};

/// Reads a directory entry; it may take its time.
using FileItemReader = CMFD_ITEM (*)(cmROStringT path);

/// The requests and results of reading file dates, shared by the editor's thread and the file-date thread, which is made
/// with the first request. All but the thread's body are for the editor's thread. One instance a process, guarded by the
/// file-date lock: the registered functions make it, stopInstance destroys it.
class FileDateData {
public:
    /// The instance, made when there is none; null when there is no memory for it.
    static FileDateData* instance();
    /// Stops the thread, waits without limit for it, and destroys everything.
    static void stopInstance();
    /// For tests: what reads from now on; null for the file system.
    static void setReader(FileItemReader reader);

    /// A file whose date takes at least this long is slow.
    void setSlowThreshold(std::int32_t ms);
    /// Queues all but those that are known to be slow, and starts the thread when there is none. Returns whether one was queued.
    bool enqueue(cmArray<FILE_DATE_THREAD_INPUT_INFO> requests);
    /// Waits until the thread has nothing left to do, for at most so many milliseconds.
    void waitUntilDone(std::int32_t budgetMs);
    /// Takes the next result; false when there is none.
    bool takeResult(FILE_DATE_THREAD_OUTPUT_INFO& result) { return outputQueue.pop(result); }
    /// The files that are slow, in no order.
    cmArray<cmStringT> slowFileNames();

    /// Waits for work. Any thread, as the next two.
    void waitForWork() { workEvent.wait(cmWaitInfinite); }
    /// Takes the next request; when there is none, the thread is done until more comes.
    bool takeRequest(FILE_DATE_THREAD_INPUT_INFO& request);
    void record(FILE_DATE_THREAD_OUTPUT_INFO result);

private:
    FileDateData() = default;
    ~FileDateData() = default;

    cmThreadEvent workEvent{true, false};
    cmThreadEvent doneEvent{true, false};
    cmQueue<FILE_DATE_THREAD_INPUT_INFO> inputQueue;
    cmQueue<FILE_DATE_THREAD_OUTPUT_INFO> outputQueue;
    cmDictionary<cmStringT, bool> slowFiles;
    std::int32_t slowThresholdMs = 1000;
    std::unique_ptr<cmThread> thread;
};
