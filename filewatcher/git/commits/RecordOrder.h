#pragma once

#include "common/cmArray.h"
#include "filewatcher/git/commits/GitLogRecord.h"

#include <cstddef>
#include <cstdint>
#include <memory>

/// Whether git's log, restricted by these arguments, lists commits in its usual order, the newest first.
bool keepsUsualOrder(cmROStringT logRestriction);

/// Puts the records of a log into the order in which they are shown: git's own, in which a parent can stand above a child of the
/// same second. So among successive records of one second a parent waits until all its children there are placed; the next one is
/// always the earliest in git's order that need not wait. Records are held back until one of another second comes, mostHeld are
/// held, or `release` is called. No record is lost, whatever its hash, parents and time are. For one thread at a time.
class RecordOrder {
public:
    static constexpr std::size_t mostHeld = 1024;

    /// Without `enabled` each record is released at once.
    explicit RecordOrder(bool enabled) : m_enabled(enabled) {}

    /// Takes the log's next record and calls `sink` with each record that it releases. The texts of `record` must stay valid
    /// until it is released or keepTexts is called.
    template <class Sink>
    void add(const GitLogRecord& record, const Sink& sink)
    {
        if (!m_held.empty() && m_held.front().time != record.time)
            release(sink);
        m_held.push_back(record);
        if (!m_enabled || m_held.size() == mostHeld)
            release(sink);
    }
    /// Calls `sink` with the records that are held; then none is. Call at the end of the log.
    template <class Sink>
    void release(const Sink& sink)
    {
        if (m_held.size() == 1)
            sink(m_held.front());
        else if (!m_held.empty())
            for (const std::uint32_t index : placed())
                sink(m_held[index]);
        forget();
    }
    /// Copies the texts of the held records, so that their originals may go.
    void keepTexts();
    /// Drops the held records.
    void forget();

private:
    /// The indices of the held records in the order in which they are released.
    const cmArray<std::uint32_t>& placed();
    /// Calls `use` with the index of each held parent of a held record; once for each time that it is named.
    template <class Use>
    void forHeldParents(std::uint32_t index, const Use& use) const;
    /// The index of the first held record with this hash; that of none when there is none.
    std::uint32_t firstHeld(cmROStringT hash) const;

    const bool m_enabled;
    cmArray<GitLogRecord> m_held;
    cmArray<std::unique_ptr<char[]>> m_texts;  ///< of the first m_texts.size() held records
    // Of `placed`; kept for their memory.
    cmArray<std::uint32_t> m_byHash;   ///< the held records by hash, those with the same hash in the log's order
    cmArray<std::uint32_t> m_waiting;  ///< by index: how many children are not placed yet
    cmArray<std::uint32_t> m_ready;    ///< a heap of those that need not wait, the earliest first
    cmArray<std::uint32_t> m_placed;
};
