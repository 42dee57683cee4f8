#pragma once

#include "common/cmThread.h"
#include "filewatcher/livediff/LiveDiffFetch.h"

#include <cstdint>

/// Fetches revisions in the background, one at a time. One instance a process. All operations are for the editor's thread, except
/// `run`, the body.
class GetFileFromVCThreaded : public cmThread {
public:
    /// Returns the instance; when there is none, creates it if `create` is true, else returns null.
    static GetFileFromVCThreaded* instance(bool create);
    /// Stops a fetch that runs, waits for its end without a time limit, and destroys the instance.
    static void stopInstance();

    ~GetFileFromVCThreaded() override = default;
    /// Starts a fetch. No fetch may be running. Returns 0, or 1 when the thread could not be started.
    int fetch(const LiveDiffRequest& request);
    std::int32_t run() override;

private:
    GetFileFromVCThreaded() { setName("GetFileFromVCThreaded"); }

    LiveDiffRequest m_request;  ///< written only while the thread does not run
};
