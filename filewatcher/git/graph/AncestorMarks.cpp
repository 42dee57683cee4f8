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
    markParents(store, number);
    while (!m_work.empty()) {
        const std::uint32_t commit = m_work.back();
        m_work.pop_back();
        markParents(store, commit);
    }
}

void AncestorMarks::markParents(const CommitStore& store, std::uint32_t number)
{
    const auto markParent = [&](std::uint32_t parent) {
        // A parent that was added before this child has not passed its mark on yet.
        if (mark(parent) && store.numberOf(parent) != CommitStore::none)
            m_work.push_back(store.numberOf(parent));
    };
    const std::uint32_t first = store.firstParent(number);
    if (first != CommitStore::none)
        markParent(first);
    for (const std::uint32_t parent : store.otherParents(number))
        markParent(parent);
}
