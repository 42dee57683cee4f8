#include "filewatcher/git/graph/AncestorMarks.h"

#include <cstddef>

bool AncestorMarks::mark(std::uint32_t id)
{
    if (isMarked(id))
        return false;
    if (m_marks.size() <= id)
        m_marks.resize(std::size_t{2} * id + 1);  // in large steps: growing by one costs more than the mark
    m_marks[id] = 1;
    return true;
}

void AncestorMarks::onCommitAdded(const CommitStore& store, std::uint32_t number)
{
    if (!isMarked(store.idOf(number)))
        return;
    m_work.push_back(number);
    // A parent that was added before this child has not passed its mark on yet.
    const auto markParent = [&](std::uint32_t parent) {
        if (mark(parent) && store.numberOf(parent) != CommitStore::none)
            m_work.push_back(store.numberOf(parent));
    };
    while (!m_work.empty()) {
        const std::uint32_t commit = m_work.back();
        m_work.pop_back();
        if (store.firstParent(commit) != CommitStore::none)
            markParent(store.firstParent(commit));
        for (const std::uint32_t parent : store.otherParents(commit))
            markParent(parent);
    }
}
