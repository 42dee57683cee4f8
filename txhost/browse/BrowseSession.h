#pragma once

#include "txhost/Host.h"
#include "txhost/browse/BrowseExchange.h"
#include "txhost/browse/BrowsedHistory.h"
#include "txhost/browse/QueryAnswers.h"
#include "txhost/browse/RowSearcher.h"

#include <chrono>
#include <cstdint>
#include <functional>
#include <memory>

/// Answers on the editor's thread what the screen wants: with the module's browser, its queries, and the status of the working
/// copy. One at a time.
class BrowseSession {
public:
    /// `repository` is the absolute path of a directory in the working copy. `exchange` must outlive the session. Its
    /// `wakeSession` posts any task to the editor, which ends the session's sleep.
    BrowseSession(Host& host, cmStringT repository, BrowseExchange& exchange);
    ~BrowseSession();
    BrowseSession(const BrowseSession&) = delete;
    BrowseSession& operator=(const BrowseSession&) = delete;

    /// Answers until the user has left, which also ends the tools that it waits for. Throws HostError when it cannot even begin.
    void run();

private:
    void load(std::uint32_t number);
    EditorObserver observer();
    bool serve(const BrowseWants& wants);
    void tellRows(const BrowseWants& wants);
    std::int32_t pauseMs() const;

    Host& m_host;
    const cmStringT m_repository;
    BrowseExchange& m_exchange;
    QueryAnswers m_answers;
    RowSearcher m_searcher;
    bool m_hasNews = false;       ///< something has come from elsewhere since it was looked for
    std::uint32_t m_edition = 0;  ///< the last one of earlier loads
    std::unique_ptr<BrowsedHistory> m_history;
};
