#include "filewatcher/git/commits/GitRefs.h"

#include "common/cmStringCatHelper.h"

#include <cstddef>

namespace {

constexpr std::size_t nameColumn = 2;

/// Removes `prefix` from the front of `text`. Returns whether it was there.
bool dropPrefix(cmROStringT& text, cmROStringT prefix)
{
    if (!text.starts_with(prefix))
        return false;
    text.remove_prefix(prefix.size());
    return true;
}

}  // namespace

void GitRefs::read(cmROStringT output, cmROStringT remoteName)
{
    while (!output.empty()) {
        cmROStringT line = cmWithoutLineEnd(cmTakeUntil(output, '\n'));
        const cmROStringT hash = cmTakeUntil(line, ' ');
        if (!line.empty())
            classifyRef(line, hash, remoteName);
    }
}

void GitRefs::classifyRef(cmROStringT ref, cmROStringT hash, cmROStringT remoteName)
{
    if (ref == "HEAD") {
        m_headHash = hash;
        return;
    }
    dropPrefix(ref, "refs/");
    const bool isLocal = dropPrefix(ref, "heads/");
    const bool isRemote = !isLocal && dropPrefix(ref, "remotes/");
    if (isLocal || (isRemote && ref != cmStringT(cmCat(remoteName) + "/HEAD").view()))
        m_branches[{isRemote, ref}] = {ref, hash};
    if (hash == m_headHash.view())
        m_nameAtHead = ref;
}

cmArray<BranchInfo> GitRefs::numbered(cmROStringT currentName, cmROStringT currentEndHash) const
{
    cmArray<BranchInfo> branches;
    if (m_branches.empty() && currentName.empty())
        return branches;
    const auto current = m_branches.find({false, currentName});
    branches.push_back(current == m_branches.end() ? BranchInfo{currentName, currentEndHash} : current->second);
    for (auto branch = m_branches.begin(); branch != m_branches.end(); ++branch) {
        if (branch != current)
            branches.push_back(branch->second);
    }
    return branches;
}

cmStringT currentBranchIn(cmROStringT output)
{
    while (!output.empty()) {
        const cmROStringT line = cmWithoutLineEnd(cmTakeUntil(output, '\n'));
        if (line.starts_with('*') && line.size() >= nameColumn)
            return line.substr(nameColumn);
    }
    return {};
}
