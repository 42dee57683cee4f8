#pragma once

#include "filewatcher/git/commits/CommitStore.h"

#include <cstdint>

/// Marks chosen commits and all their ancestors, through all parents, in one pass while commits are added, in whatever order.
/// For one thread at a time.
class AncestorMarks {
public:
    /// Marks the commit with this id. Call before the first commit is added.
    void markStart(std::uint32_t id) { mark(id); }
    /// Passes marks on to the parents of a commit that was added to `store`, by number. Call for every commit.
    void onCommitAdded(const CommitStore& store, std::uint32_t number);
    bool isMarked(std::uint32_t id) const { return id < m_marks.size() && m_marks[id] != 0; }

private:
    /// Returns whether the commit was not marked before.
    bool mark(std::uint32_t id);
    void markParents(const CommitStore& store, std::uint32_t number);

    cmArray<std::uint8_t> m_marks;  ///< by id
    cmArray<std::uint32_t> m_work;  ///< numbers of marked commits whose parents are to be marked; kept for its memory
};
