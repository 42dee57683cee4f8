#pragma once

#include "common/cmArray.h"
#include "common/cmDictionary.h"
#include "common/cmQueue.h"
#include "common/cmString.h"
#include "common/cmThread.h"
#include "filewatcher/reload/FileDateSource.h"

#include <cstddef>
#include <cstdint>
#include <deque>
#include <memory>
#include <optional>

/// The file-date threads with the requests and results that they share with the editor's thread. One instance a process. One
/// thread, the reader, reads one date after the other. A read that has taken the slow threshold is given up: its file is slow,
/// its thread hangs until the file system answers and then ends, and a new reader goes on with the other files. The editor's
/// thread is the one that gives up: no read hangs unnoticed while it asks or waits.
///
/// All operations are for the editor's thread, except those marked "file-date thread".
class FileDateData {
public:
    /// How many reads may hang at a time. While so many do, no date is read.
    static constexpr std::size_t maxHangingReads = 4;

    /// Returns the instance and creates it when there is none; null when there is no memory for it.
    static FileDateData* instance();
    /// Stops all threads, waits for their ends without a time limit, and destroys the instance with its queues and slow files.
    static void stopInstance();

    /// A file whose date takes at least this long to read is slow, also the one that is being read.
    void setSlowThreshold(std::int32_t ms);
    /// Starts a reader unless there is one or too many reads hang. Returns false when it cannot be started.
    bool startReader();
    /// Queues the requests for files that are not known to be slow and do not wait already, a file once. Call startReader before.
    /// Returns whether any of these files waits now.
    bool enqueue(cmArray<FILE_DATE_THREAD_INPUT_INFO> requests);
    /// Blocks until all requests are answered or their reads given up, at most `budgetMs`; not at all when that is negative or
    /// nothing can be answered. Gives up reads meanwhile.
    void waitUntilDone(std::int32_t budgetMs);
    /// Removes all results that have arrived and returns them, the oldest first.
    std::deque<FILE_DATE_THREAD_OUTPUT_INFO> takeResults();
    /// The names of all slow files, in no particular order. Gives up the current read if that has taken too long.
    cmArray<cmStringT> slowFileNames();

    /// File-date thread. Blocks until requests are queued or a stop is requested.
    void waitForWork() { workEvent.wait(cmWaitInfinite); }
    /// File-date thread. Moves the next request into `request`; its read begins. When there is none, returns false and ends the
    /// wait of the editor's thread; waitForWork then blocks again.
    bool takeRequest(FILE_DATE_THREAD_INPUT_INFO& request);
    /// File-date thread. Ends the read of `thread`: queues the result, if there is one, or notes its file as slow. Returns false
    /// when the read was given up: then it drops the result, and the thread must end.
    bool endRead(const cmThread& thread, std::optional<FILE_DATE_THREAD_OUTPUT_INFO> result);

    /// For tests, any thread: whether waitForWork would return at once.
    bool hasWork() { return workEvent.wait(0) == cmWaitSignalled; }

private:
    FileDateData() = default;
    ~FileDateData() = default;

    bool ensureReader() CM_REQUIRES(fileDateLock);
    std::uint32_t giveUpOverdueRead() CM_REQUIRES(fileDateLock);

    static cmMutex fileDateLock;
    static FileDateData* theInstance CM_GUARDED_BY(fileDateLock);

    cmThreadEvent workEvent{true, false};
    cmThreadEvent doneEvent{true, false};
    cmQueue<FILE_DATE_THREAD_INPUT_INFO> inputQueue CM_GUARDED_BY(fileDateLock);
    cmQueue<FILE_DATE_THREAD_OUTPUT_INFO> outputQueue CM_GUARDED_BY(fileDateLock);
    cmStringT reading CM_GUARDED_BY(fileDateLock);  ///< the name whose date the reader reads; empty between two reads
    std::uint32_t readingSince CM_GUARDED_BY(fileDateLock) = 0;
    cmDictionary<cmStringT, bool> slowFiles CM_GUARDED_BY(fileDateLock);
    std::int32_t slowThresholdMs CM_GUARDED_BY(fileDateLock) = 1000;
    std::unique_ptr<cmThread> reader CM_GUARDED_BY(fileDateLock);
    cmArray<std::unique_ptr<cmThread>> hanging CM_GUARDED_BY(fileDateLock);  ///< threads whose reads were given up
};
