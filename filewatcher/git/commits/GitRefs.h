#pragma once

#include "common/cmArray.h"
#include "common/cmDictionary.h"
#include "common/cmString.h"

#include <utility>

/// A branch and the commit that it ends at.
struct BranchInfo {
    cmStringT name;  ///< of a remote branch with its remote's
    cmStringT hash;
};

/// What git's list of refs tells.
class GitRefs {
public:
    /// Reads the lines "HASH NAME". `remoteName` is git's list of remotes as it stands.
    void read(cmROStringT output, cmROStringT remoteName);
    /// One ref. Neither tags nor what a remote calls its HEAD are branches.
    void classifyRef(cmROStringT ref, cmROStringT hash, cmROStringT remoteName);

    const cmStringT& headHash() const { return m_headHash; }
    /// The last of the refs that lead to where HEAD leads.
    const cmStringT& nameAtHead() const { return m_nameAtHead; }
    /// The branches by number. Number 0 is the current branch's, `currentName`: when it is none of those (HEAD is detached, or
    /// there is no current one), it ends at `currentEndHash`. The other local ones follow, then the remote ones, each by name.
    /// Empty without any branch.
    cmArray<BranchInfo> numbered(cmROStringT currentName, cmROStringT currentEndHash) const;

private:
    using Key = std::pair<bool, cmStringT>;  ///< whether it is a remote one; its name

    cmStringT m_headHash;
    cmStringT m_nameAtHead;
    cmSortedDictionary<Key, BranchInfo> m_branches;
};

/// The current branch in git's list of branches; null when there is none.
cmStringT currentBranchIn(cmROStringT output);
