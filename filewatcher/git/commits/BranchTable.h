#pragma once

#include "common/cmArray.h"
#include "common/cmDictionary.h"
#include "common/cmString.h"
#include "filewatcher/git/commits/CommitStore.h"
#include "filewatcher/git/commits/GitRefs.h"

#include <cstdint>

/// The branches of one load by number, and the branches that end at each commit. For one thread at a time.
class BranchTable {
public:
    void setCurrentName(cmROStringT name) { m_currentName = name; }
    const cmStringT& currentName() const { return m_currentName; }
    /// The commit that the current branch ends at.
    void setCurrentEndHash(cmROStringT hash) { m_currentEndHash = hash; }
    const cmStringT& currentEndHash() const { return m_currentEndHash; }

    /// Numbers the branches that `refs` lists, in the order of GitRefs::numbered. Call once, after the current branch is set. The
    /// commits that branches end at get their ids from `store`.
    void assign(const GitRefs& refs, CommitStore& store);

    /// The commit of HEAD; null before `assign` and when there is none.
    const cmStringT& headHash() const { return m_headHash; }
    /// Whether any branch ends at a commit.
    bool anyTip() const { return !m_numbersByTip.empty(); }
    /// Returns null when there is no branch of that number.
    const BranchInfo* branch(std::int64_t number) const;
    /// The numbers of the branches that end at the commit with this id, ascending.
    cmArray<std::int64_t> numbersAt(std::uint32_t id) const;

private:
    cmStringT m_currentName;
    cmStringT m_currentEndHash;
    cmStringT m_headHash;
    cmArray<BranchInfo> m_branches;
    cmDictionary<std::uint32_t, cmArray<std::int64_t>> m_numbersByTip;  ///< by the id of the commit
};
