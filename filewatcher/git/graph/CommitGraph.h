#pragma once

#include "filewatcher/git/commits/CommitStore.h"
#include "filewatcher/git/graph/GraphLayout.h"

#include <cstdint>

/// All commits of a store, row by number. Above its parent, the current commit, stands the working copy.
class AllCommits : public GraphCommits {
public:
    explicit AllCommits(const CommitStore& store) : m_store(store) {}
    /// The id of the commit that the working copy is joined to; CommitStore::none for none. Before anything is laid out.
    void setWorkingCopyParent(std::uint32_t id) { m_workingCopyParent = id; }
    std::uint32_t workingCopyParent() const { return m_workingCopyParent; }
    void node(std::uint32_t row, GraphNode& node) const override;

private:
    const CommitStore& m_store;
    std::uint32_t m_workingCopyParent = CommitStore::none;
};

/// Some of the commits, with the lines between those alone.
class SomeCommits : public GraphCommits {
public:
    /// `numbers`, ascending, are those of commits in the store of `all`.
    SomeCommits(const AllCommits& all, const CommitStore& store, cmArray<std::uint32_t> numbers);
    const cmArray<std::uint32_t>& numbers() const { return m_numbers; }
    /// The row of a commit by number; CommitStore::none when it is not among them.
    std::uint32_t rowOf(std::uint32_t number) const;
    void node(std::uint32_t row, GraphNode& node) const override;

private:
    const AllCommits& m_all;
    const CommitStore& m_store;
    const cmArray<std::uint32_t> m_numbers;
};
