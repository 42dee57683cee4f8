#include "filewatcher/git/browser/ShownHistory.h"

#include "filewatcher/git/browser/CommitFilter.h"

#include <cstddef>

namespace {

constexpr std::int64_t noRow = -1;

}  // namespace

ShownHistory::Filter::Filter(cmROStringT wanted, const AllCommits& all, const CommitStore& store)
    : text(wanted), commitCount(store.count()), commits(all, store, filterCommits(store, wanted))
{
    layout.finish(static_cast<std::uint32_t>(commits.numbers().size()));
}

ShownHistory::ShownHistory(cmROStringT logRestriction)
    : m_restricted(!logRestriction.empty()), m_order(keepsUsualOrder(logRestriction))
{
}

void ShownHistory::setBranches(BranchTable branches)
{
    m_branches = std::move(branches);
    m_onCurrentBranch.markStart(CommitIds::workingCopy);
    const std::uint32_t head = m_store.intern(m_branches.headHash());
    if (head == CommitStore::none)
        return;
    m_onCurrentBranch.markStart(head);
    m_storedOnly.setWorkingCopyParent(head);
    if (!m_restricted)
        m_all.setWorkingCopyParent(head);
}

bool ShownHistory::finishLog(std::uint32_t limit)
{
    m_order.release([this](const GitLogRecord& released) { addRecord(released); });
    if (!m_restricted) {
        m_layout->finish(m_store.count());
        return false;
    }
    if (!m_layoutAnew)
        m_layoutAnew = std::make_unique<GraphLayout>(m_storedOnly);
    // The layout runs behind the commits that it is told of, so that this lays out more than `limit` rows.
    const std::uint32_t known = m_layoutAnew->rowCount() + GraphLayout::longLine + limit;
    if (known < m_store.count()) {
        m_layoutAnew->extend(known);
        return true;
    }
    m_layoutAnew->finish(m_store.count());
    m_layout = std::move(m_layoutAnew);
    m_drawn = &m_storedOnly;
    return false;
}

void ShownHistory::addRecord(const GitLogRecord& record)
{
    if (m_store.add(record))
        m_onCurrentBranch.onCommitAdded(m_store, m_store.count() - 1);
}

bool ShownHistory::copyCommit(std::int64_t number, GitCommitInfo& info) const
{
    if (!exists(number))
        return false;
    const auto index = static_cast<std::uint32_t>(number);
    if (index != 0 && rowOf(index) == noRow)
        return false;
    copyKnown(index, info);
    return true;
}

bool ShownHistory::findCommit(cmROStringT hash, GitCommitInfo& info) const
{
    const std::uint32_t number = m_store.find(hash);
    if (number == CommitStore::none)
        return false;
    copyKnown(number, info);
    return true;
}

bool ShownHistory::copyTags(std::int64_t number, cmArray<cmStringT>& names) const
{
    if (!exists(number))
        return false;
    names = m_tags.namesAt(m_store.hashText(m_store.idOf(static_cast<std::uint32_t>(number))));
    return true;
}

void ShownHistory::copyKnown(std::uint32_t number, GitCommitInfo& info) const
{
    m_store.copy(number, info);
    info.row = rowOf(number);
    const std::uint32_t id = m_store.idOf(number);
    info.onCurrentBranch = m_onCurrentBranch.isMarked(id) ? 1 : 0;
    if (number == 0) {
        info.branchNumbers = {0};
        info.pendingBranches = {{m_branches.headHash()}};
        return;
    }
    info.branchNumbers = m_branches.numbersAt(info.hash);
    addPendingBranches(number, info);
}

void ShownHistory::addPendingBranches(std::uint32_t number, GitCommitInfo& info) const
{
    if (m_filter)
        return;  // a filtered graph has no lines to commits that are not shown
    GraphNode node;
    m_drawn->node(number, node);
    for (const GraphNode::Parent& parent : node.parents) {
        const std::uint32_t parentNumber = m_store.numberOf(parent.id);
        if (parentNumber == CommitStore::none || rowOf(parentNumber) == noRow)
            info.pendingBranches.push_back({m_store.hashText(parent.id)});
    }
}

std::int64_t ShownHistory::rowOf(std::uint32_t number) const
{
    if (!m_filter)
        return number < m_layout->rowCount() ? number : noRow;
    const std::uint32_t row = m_filter->commits.rowOfNumber(number);
    return row == GraphNode::noRow ? noRow : row;
}

std::int64_t ShownHistory::commitInRow(std::int32_t row) const
{
    return m_filter ? m_filter->commits.numbers()[static_cast<std::size_t>(row)] : row;
}

bool ShownHistory::copyGraphRow(std::int64_t number, GraphRow& row)
{
    const std::int64_t index = exists(number) ? rowOf(static_cast<std::uint32_t>(number)) : noRow;
    if (index == noRow)
        return false;
    GraphLayout& layout = m_filter ? m_filter->layout : *m_layout;
    layout.row(static_cast<std::uint32_t>(index), row);
    return true;
}

bool ShownHistory::filter(cmROStringT text)
{
    m_waitingText = {};
    if (text.empty()) {
        m_filter.reset();
        return true;
    }
    auto filter = std::make_unique<Filter>(text, m_storedOnly, m_store);
    if (filter->commits.numbers().empty()) {
        m_waitingText = text;
        m_searched = m_store.count();
        return false;
    }
    m_filter = std::move(filter);
    return true;
}

bool ShownHistory::applyWaitingFilter()
{
    if (m_waitingText.isNull() || filterCommits(m_store, m_waitingText, std::exchange(m_searched, m_store.count())).empty())
        return false;
    return filter(cmStringT(m_waitingText));
}

void ShownHistory::filterNewCommits()
{
    if (m_filter && m_filter->commitCount != m_store.count())
        filter(m_filter->text);
}
