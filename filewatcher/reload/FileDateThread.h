#pragma once

#include "common/cmArray.h"
#include "common/cmDictionary.h"
#include "common/cmFile.h"
#include "common/cmQueue.h"
#include "common/cmString.h"
#include "common/cmThread.h"

#include <cstdint>
#include <memory>

/// A request for one file's date. The two numbers come from the editor and are not used.
struct FILE_DATE_THREAD_INPUT_INFO {
    cmStringT fileName;
    std::int32_t arg1 = 0;
    std::int32_t arg2 = 0;
};

/// The answer to a request.
struct FILE_DATE_THREAD_OUTPUT_INFO {
    cmStringT fileName;
    CMFD_ITEM item;  ///< empty when the file does not exist or could not be read
    std::int32_t elapsedMs = 0;
    std::int32_t readOnlyFlag = 0;  ///< 1 for a read-only file and for a path that is not a plain local one
};

/// Where the thread gets directory entries and the time from.
struct FileDateSource {
    CMFD_ITEM (*readItem)(cmROStringT path);  ///< may block for as long as the file system does
    std::uint32_t (*tickCount)();             ///< in milliseconds; wraps around
};

/// The file-date thread with the requests and results that it shares with the editor's thread. One instance a process.
/// All operations are for the editor's thread, except those marked "file-date thread".
class FileDateData {
public:
    /// Returns the instance and creates it when there is none; null when there is no memory for it.
    static FileDateData* instance();
    /// Stops the thread, waits for its end without a time limit, and destroys the instance with its queues and slow files.
    static void stopInstance();
    /// For tests: replaces the source from now on; null restores the file system and the clock. Not owned. Any thread.
    static void setSource(const FileDateSource* source);

    /// A file whose date takes at least this long to read is slow.
    void setSlowThreshold(std::int32_t ms);
    /// Starts the thread unless it runs. Returns false when it cannot be started.
    bool startThread();
    /// Queues the requests for files that are not known to be slow. The thread must run. Returns whether it queued any.
    bool enqueue(cmArray<FILE_DATE_THREAD_INPUT_INFO> requests);
    /// Blocks until the input queue is empty and the last request is answered, at most `budgetMs`; not at all when that is
    /// negative.
    void waitUntilDone(std::int32_t budgetMs);
    /// Moves the next result into `result`; false when there is none.
    bool takeResult(FILE_DATE_THREAD_OUTPUT_INFO& result);
    /// The names of all slow files, in no particular order.
    cmArray<cmStringT> slowFileNames();

    /// File-date thread. Blocks until requests are queued or a stop is requested.
    void waitForWork() { workEvent.wait(cmWaitInfinite); }
    /// File-date thread. Moves the next request into `request`. When there is none, returns false and ends the wait of the
    /// editor's thread; waitForWork then blocks again.
    bool takeRequest(FILE_DATE_THREAD_INPUT_INFO& request);
    /// File-date thread. Queues a result, or notes its file as slow.
    void record(FILE_DATE_THREAD_OUTPUT_INFO result);

    /// For tests, any thread: whether waitForWork would return at once.
    bool hasWork() { return workEvent.wait(0) == cmWaitSignalled; }
    /// For tests, any thread: whether the editor's thread is inside waitUntilDone.
    bool isEditorWaiting() { return doneEvent.waiterCount() > 0; }

private:
    FileDateData() = default;
    ~FileDateData() = default;

    static cmMutex fileDateLock;
    static FileDateData* theInstance CM_GUARDED_BY(fileDateLock);

    cmThreadEvent workEvent{true, false};
    cmThreadEvent doneEvent{true, false};
    cmQueue<FILE_DATE_THREAD_INPUT_INFO> inputQueue CM_GUARDED_BY(fileDateLock);
    cmQueue<FILE_DATE_THREAD_OUTPUT_INFO> outputQueue CM_GUARDED_BY(fileDateLock);
    cmDictionary<cmStringT, bool> slowFiles CM_GUARDED_BY(fileDateLock);
    std::int32_t slowThresholdMs CM_GUARDED_BY(fileDateLock) = 1000;
    std::unique_ptr<cmThread> fileDateThread CM_GUARDED_BY(fileDateLock);
};
