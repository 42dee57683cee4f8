#include "filewatcher/git/graph/AncestorMarks.h"

#include <cstddef>

bool AncestorMarks::mark(std::uint32_t id)
{
    if (isMarked(id))
        return false;
    if (m_marks.size() <= id)
        m_marks.resize(std::size_t{2} * id + 1);  // one by one, growing would cost more than marking
    m_marks[id] = 1;
    return true;
}

void AncestorMarks::arrived(const CommitStore& store, std::uint32_t number)
{
    if (!isMarked(store.idOf(number)))
        return;
    m_work.push_back(number);
    // A parent that came before its child passes the mark on from here.
    const auto pass = [&](std::uint32_t parent) {
        if (mark(parent) && store.numberOf(parent) != CommitStore::none)
            m_work.push_back(store.numberOf(parent));
    };
    while (!m_work.empty()) {
        const std::uint32_t commit = m_work.back();
        m_work.pop_back();
        if (store.firstParent(commit) != CommitStore::none)
            pass(store.firstParent(commit));
        for (const std::uint32_t parent : store.otherParents(commit))
            pass(parent);
    }
}
