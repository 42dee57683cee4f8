#pragma once

#include "common/CommandRunner.h"
#include "common/cmString.h"
#include "common/cmThread.h"

#include <cstdint>

/// A revision to be fetched.
struct LiveDiffRequest {
    cmStringT origin;       ///< the editor's own
    cmStringT commandLine;  ///< writes the revision to its standard output
    cmStringT file;
    cmStringT cacheFile;
    cmStringT workingDirectory;
};

/// Runs the request's command and puts its output into the cache file, byte for byte; both on the calling thread. A command
/// whose standard error says "fatal:", one that cannot be started and a file that cannot be written are failures. Whatever
/// the outcome, the status table tells it. Returns 0 or `failure`.
std::int32_t fetchLiveDiffFile(const LiveDiffRequest& request, const CaptureControl& control, std::int32_t failure);

/// Fetches revisions in the background, one at a time. One instance a process, for the editor's thread; its body alone runs on
/// the thread.
class GetFileFromVCThreaded : public cmThread {
public:
    /// The instance, or null when there is none and `create` does not hold.
    static GetFileFromVCThreaded* instance(bool create);
    /// Stops the fetch, waits without limit for the thread, and destroys the instance. What had arrived counts as fetched.
    static void stopInstance();

    ~GetFileFromVCThreaded() override = default;
    /// Starts a fetch; not while one runs. The result of `start`.
    int fetch(const LiveDiffRequest& newRequest);
    std::int32_t run() override;

private:
    GetFileFromVCThreaded() { setName("GetFileFromVCThreaded"); }

    LiveDiffRequest request;  ///< written while the thread is idle only
};
