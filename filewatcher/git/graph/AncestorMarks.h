#pragma once

#include "filewatcher/git/commits/CommitStore.h"

#include <cstdint>

/// Which commits a chosen one descends from, through all parents, and that one itself. Told with one pass over the commits,
/// in whatever order they come. For one thread at a time.
class AncestorMarks {
public:
    void clear() { *this = AncestorMarks(); }
    /// Chooses, by id; before any commit has come.
    void begin(std::uint32_t id) { mark(id); }
    /// A commit has come, by number.
    void arrived(const CommitStore& store, std::uint32_t number);
    bool isMarked(std::uint32_t id) const { return id < m_marks.size() && m_marks[id] != 0; }

private:
    /// Whether the mark is new.
    bool mark(std::uint32_t id);

    cmArray<std::uint8_t> m_marks;
    cmArray<std::uint32_t> m_work;
};
