#include "filewatcher/bridge/EditorEntry.h"

#include "filewatcher/bridge/DebugLog.h"

void logFailedEntry(const std::exception& failure) noexcept
try {
    debugLog(__func__, __LINE__, failure.what());
} catch (const std::exception&) {
    // There is no memory for the line either.
}
