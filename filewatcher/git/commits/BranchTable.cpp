#include "filewatcher/git/commits/BranchTable.h"

#include <algorithm>

void BranchTable::assign(const GitRefs& refs)
{
    m_headHash = refs.headHash();
    m_branches = refs.numbered(m_currentName, m_currentEndHash);
    for (std::size_t number = 0; number < m_branches.size(); ++number) {
        if (!m_branches[number].hash.isEmpty())
            m_byTip.push_back(number);
    }
    std::ranges::stable_sort(m_byTip, {}, [this](std::size_t number) { return m_branches[number].hash.view(); });
}

const BranchInfo* BranchTable::branch(std::int64_t number) const
{
    if (number < 0 || static_cast<std::size_t>(number) >= m_branches.size())
        return nullptr;
    return &m_branches[static_cast<std::size_t>(number)];
}

cmArray<std::int64_t> BranchTable::numbersAt(cmROStringT hash) const
{
    cmArray<std::int64_t> numbers;
    const auto tipOf = [this](std::size_t number) { return m_branches[number].hash.view(); };
    for (auto tip = std::ranges::lower_bound(m_byTip, hash, {}, tipOf); tip != m_byTip.end() && tipOf(*tip) == hash; ++tip)
        numbers.push_back(static_cast<std::int64_t>(*tip));
    return numbers;
}
