#pragma once

#include "common/cmFile.h"
#include "common/cmThreadEvent.h"

#include <cstdint>
#include <optional>

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

/// Where directory entries and the time come from.
struct FileDateSource {
    CMFD_ITEM (*readItem)(cmROStringT path);  ///< may block for as long as the file system does
    std::uint32_t (*tickCount)();             ///< in milliseconds; wraps around
    /// Waits for the event, at most so long by this clock. Returns a code of cmWaitHandle::wait.
    std::uint32_t (*wait)(cmThreadEvent& event, std::uint32_t timeoutMs);
};

/// The source in use. Any thread.
const FileDateSource& fileDateSource();
/// For tests and benchmarks: replaces the source from now on; null restores the file system and the clock. Not owned. Any thread.
void setFileDateSource(const FileDateSource* source);

/// Reads the date of a file. Nothing when its file system has no file times. Blocks for as long as the file system does. Any
/// thread.
std::optional<FILE_DATE_THREAD_OUTPUT_INFO> readFileDate(cmStringT fileName);
