#pragma once

#include "txhost/Host.h"
#include "txhost/browse/BrowseExchange.h"

/// Answers on the editor's thread what the screen wants: with the module's browser, its queries, and the status of the working
/// copy. One at a time.
class BrowseSession {
public:
    /// `repository` is the absolute path of a directory in the working copy. `exchange` must outlive the session.
    BrowseSession(Host& host, cmStringT repository, BrowseExchange& exchange);
    ~BrowseSession();
    BrowseSession(const BrowseSession&) = delete;
    BrowseSession& operator=(const BrowseSession&) = delete;

    /// Answers until the user has left, which also ends the tools that it waits for. Throws HostError when it cannot even begin.
    void run();
};
