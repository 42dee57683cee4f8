#pragma once

#include "common/cmMutex.h"
#include "common/cmThread.h"
#include "common/cmThreadEvent.h"
#include "txhost/browse/BrowseExchange.h"

#include <cstdint>
#include <functional>
#include <optional>

/// Ends queries that nobody waits for any more. A call of the module cannot be cancelled, so the tools that it waits for are
/// ended: those of the editor's thread after a while; and when the user has left, all that this program has started. For the
/// editor's thread.
class QueryWatch : private cmThread {
public:
    /// `exchange` must outlive the object.
    explicit QueryWatch(BrowseExchange& exchange);
    ~QueryWatch() override;

    /// Runs `query`, which asks the module. `isWanted` says of the wants, on another thread, whether they include it; null: it is
    /// wanted as long as they stay as they are. Returns whether its answer counts: it is still wanted and was not ended.
    bool run(const std::function<bool(const BrowseWants&)>& isWanted, const std::function<void()>& query);

private:
    struct Query {
        BrowseWants wants;  ///< when it began
        std::function<bool(const BrowseWants&)> isWanted;
        std::uint32_t unwantedMs = 0;  ///< for how long something else has been wanted
        bool wasEnded = false;
    };

    std::int32_t run() override;
    bool look();

    BrowseExchange& m_exchange;
    const std::uint32_t m_editorThread;
    cmThreadEvent m_wake{false, false};
    cmMutex m_lock;
    std::optional<Query> m_query CM_GUARDED_BY(m_lock);
};
