#pragma once

#include "common/cmArray.h"
#include "common/cmString.h"
#include "filewatcher/git/commits/GitRefs.h"

#include <cstddef>
#include <cstdint>

/// The branches of one load by number, and the branches that end at each commit. Needs no commits, so that it is built without
/// the lock that guards them. For one thread at a time.
class BranchTable {
public:
    void setCurrentName(cmROStringT name) { m_currentName = name; }
    const cmStringT& currentName() const { return m_currentName; }
    /// The commit that the current branch ends at.
    void setCurrentEndHash(cmROStringT hash) { m_currentEndHash = hash; }
    const cmStringT& currentEndHash() const { return m_currentEndHash; }

    /// Numbers the branches that `refs` lists, in the order of GitRefs::numbered. Call once, after the current branch is set.
    void assign(const GitRefs& refs);

    /// The commit of HEAD; null before `assign` and when there is none.
    const cmStringT& headHash() const { return m_headHash; }
    /// Whether any branch ends at a commit.
    bool anyTip() const { return !m_byTip.empty(); }
    /// Returns null when there is no branch of that number.
    const BranchInfo* branch(std::int64_t number) const;
    /// The numbers of the branches that end at the commit with this hash, as git writes it, ascending.
    cmArray<std::int64_t> numbersAt(cmROStringT hash) const;

private:
    cmStringT m_currentName;
    cmStringT m_currentEndHash;
    cmStringT m_headHash;
    cmArray<BranchInfo> m_branches;
    cmArray<std::size_t> m_byTip;  ///< the numbers of those that end at a commit, by its hash
};
