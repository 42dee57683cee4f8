#pragma once

#include "filewatcher/git/commits/CommitStore.h"
#include "filewatcher/git/graph/GraphCommits.h"

#include <cstdint>

/// Which parents of a commit get a line.
enum class GraphParents : std::uint8_t {
    all,
    stored,  ///< those in the store; more may come while commits are added, so it is laid out only when the log has ended
};

/// All commits of a store; the row of a commit is its number. The parent of the working copy, row 0, is the commit of HEAD.
class AllCommits : public GraphCommits {
public:
    explicit AllCommits(const CommitStore& store, GraphParents parents = GraphParents::all) : m_store(store), m_parents(parents)
    {
    }
    /// Sets the id of the working copy's parent; without a call it has none. Call before any row is laid out.
    void setWorkingCopyParent(std::uint32_t id) { m_workingCopyParent = id; }
    void node(std::uint32_t row, GraphNode& node) const override;
    std::uint32_t idOf(std::uint32_t row) const override;
    std::uint32_t rowOf(std::uint32_t id) const override;
    cmStringT hashText(std::uint32_t id) const override;

private:
    const CommitStore& m_store;
    const GraphParents m_parents;
    std::uint32_t m_workingCopyParent = CommitStore::none;
};

/// Some commits of a store; only lines between them are kept.
class SomeCommits : public GraphCommits {
public:
    /// `numbers` are the numbers of the commits, ascending. `all` and its `store` must outlive the object.
    SomeCommits(const AllCommits& all, const CommitStore& store, cmArray<std::uint32_t> numbers);
    const cmArray<std::uint32_t>& numbers() const { return m_numbers; }
    /// Returns the row of a commit by number; GraphNode::noRow when it has none.
    std::uint32_t rowOfNumber(std::uint32_t number) const;
    void node(std::uint32_t row, GraphNode& node) const override;
    std::uint32_t idOf(std::uint32_t row) const override;
    std::uint32_t rowOf(std::uint32_t id) const override;
    cmStringT hashText(std::uint32_t id) const override;

private:
    const AllCommits& m_all;
    const CommitStore& m_store;
    const cmArray<std::uint32_t> m_numbers;
};
