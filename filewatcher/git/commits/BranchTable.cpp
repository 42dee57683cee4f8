#include "filewatcher/git/commits/BranchTable.h"

#include <cstddef>

void BranchTable::assign(const GitRefs& refs, CommitStore& store)
{
    m_headHash = refs.headHash();
    m_branches = refs.numbered(m_currentName, m_currentEndHash);
    for (std::size_t number = 0; number < m_branches.size(); ++number) {
        const std::uint32_t tip = store.intern(m_branches[number].hash);
        if (tip != CommitStore::none)
            m_numbersByTip[tip].push_back(static_cast<std::int64_t>(number));
    }
}

const BranchInfo* BranchTable::branch(std::int64_t number) const
{
    if (number < 0 || static_cast<std::size_t>(number) >= m_branches.size())
        return nullptr;
    return &m_branches[static_cast<std::size_t>(number)];
}

cmArray<std::int64_t> BranchTable::numbersAt(std::uint32_t id) const
{
    const auto found = m_numbersByTip.find(id);
    return found == m_numbersByTip.end() ? cmArray<std::int64_t>() : found->second;
}
