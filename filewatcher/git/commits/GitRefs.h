#pragma once

#include "common/cmArray.h"
#include "common/cmDictionary.h"
#include "common/cmString.h"

#include <utility>

/// A branch and the commit at its tip.
struct BranchInfo {
    cmStringT name;  ///< that of a remote branch begins with the name of the remote
    cmStringT hash;
};

/// The branches and HEAD in git's list of refs. For one thread at a time.
class GitRefs {
public:
    /// Reads lines of the form "HASH NAME"; others are ignored. `remoteName` is git's unchanged list of remotes.
    void read(cmROStringT output, cmROStringT remoteName);
    /// Adds one ref when it is a branch: tags and the HEAD of a remote are not.
    void classifyRef(cmROStringT ref, cmROStringT hash, cmROStringT remoteName);

    const cmStringT& headHash() const { return m_headHash; }
    /// The last ref that names the same commit as HEAD.
    const cmStringT& nameAtHead() const { return m_nameAtHead; }
    /// Returns the branches in the order of their numbers: first the current branch, then the other local branches by name, then
    /// the remote ones by name. `currentName` need not be in the list (HEAD is detached); its tip is `currentEndHash` then. Empty
    /// without any branch.
    cmArray<BranchInfo> numbered(cmROStringT currentName, cmROStringT currentEndHash) const;

private:
    using Key = std::pair<bool, cmStringT>;  ///< whether it is remote, and its name

    cmStringT m_headHash;
    cmStringT m_nameAtHead;
    cmSortedDictionary<Key, BranchInfo> m_branches;
};

/// Returns the current branch from the output of git's branch command; null when no line is marked as current.
cmStringT currentBranchIn(cmROStringT output);
