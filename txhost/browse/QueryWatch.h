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
    /// `exchange` must outlive the object. Throws HostError when there is no thread.
    explicit QueryWatch(BrowseExchange& exchange);
    ~QueryWatch() override;

    /// Whether what somebody wants includes a query; null: nobody does, it may run while nothing else is to be done. Called on
    /// another thread, too.
    using IsWanted = std::function<bool(const BrowseWants&)>;

    /// Runs `query`, which asks the module. It has to end soon when something else is wanted meanwhile or, with `isInTheWay`, in
    /// any case. Returns whether its answer counts: it is still wanted and was not ended.
    bool run(const IsWanted& isWanted, bool isInTheWay, const std::function<void()>& query);

private:
    struct Query {
        BrowseWants wants;  ///< when it began
        IsWanted isWanted;
        bool isInTheWay;
        std::uint32_t inTheWayMs = 0;  ///< for how long
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
