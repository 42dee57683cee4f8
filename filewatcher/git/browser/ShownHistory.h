#pragma once

#include "filewatcher/git/commits/BranchTable.h"
#include "filewatcher/git/commits/CommitStore.h"
#include "filewatcher/git/commits/RecordOrder.h"
#include "filewatcher/git/commits/TagTable.h"
#include "filewatcher/git/graph/AncestorMarks.h"
#include "filewatcher/git/graph/CommitGraph.h"
#include "filewatcher/git/graph/GraphLayout.h"

#include <cstdint>
#include <memory>
#include <utility>

/// The history of one load: its commits, branches and graph, and the rows that are shown, which are all commits or those that a
/// filter selects. A load has a new one. Has no lock: for one thread at a time.
class ShownHistory {
public:
    /// `logRestriction`: the arguments that restrict the log; empty for none.
    explicit ShownHistory(cmROStringT logRestriction = {});
    ShownHistory(const ShownHistory&) = delete;
    ShownHistory& operator=(const ShownHistory&) = delete;

    BranchTable& branches() { return m_branches; }
    /// Takes the numbered branches and marks HEAD. Call once, before the first commit is added. While a restricted log runs, HEAD
    /// may be missing from it, so no line is drawn from the working copy to it.
    void setBranches(BranchTable branches);
    void setTags(TagTable tags) { m_tags = std::move(tags); }

    /// Takes the first `limit` records of `batch` and adds those that RecordOrder releases; the working copy is added with the
    /// very first one that is taken. The last rows are not laid out yet. `stopRequested()` is asked before each record. Returns
    /// whether `batch` may hold more that should be taken.
    template <class StopCheck>
    bool addRecords(cmROStringT& batch, int limit, const StopCheck& stopRequested)
    {
        GitLogRecord record;
        bool more = true;
        try {
            for (int count = 0; count < limit; ++count) {
                more = !stopRequested() && takeGitLogRecord(batch, record);
                if (!more)
                    break;
                if (m_store.count() == 0)
                    m_store.addWorkingCopy();
                m_order.add(record, [this](const GitLogRecord& released) { addRecord(released); });
            }
            m_order.keepTexts();
        } catch (...) {
            m_order.forget();  // their texts may go with the batch
            throw;
        }
        m_layout->extend(m_store.count());
        return more;
    }
    /// Lays out the rows of all commits that were added. Call when the log pauses.
    void catchUp() { m_layout->catchUp(m_store.count()); }
    /// Adds the records that are held back and lays out the rows that are missing. A restricted log is laid out anew, without the
    /// lines to parents that are not in it, and then shown so. Call when the log has ended, until it returns false: each call
    /// lays out about `limit` rows anew.
    bool finishLog(std::uint32_t limit);

    /// The number of commits, the working copy included. Commits are numbered from 0, in the order of the log.
    std::int32_t commitCount() const { return static_cast<std::int32_t>(m_store.count()); }
    /// Copies a commit by number. Returns false when there is none, or when it has no row (the working copy needs none).
    bool copyCommit(std::int64_t number, GitCommitInfo& info) const;
    /// Copies a commit by its hash or a short hash, shown or not. Returns false when there is none.
    bool findCommit(cmROStringT hash, GitCommitInfo& info) const;
    /// Copies the names of the tags at a commit, shown or not. Returns false when there is no commit of that number.
    bool copyTags(std::int64_t number, cmArray<cmStringT>& names) const;

    /// The number of rows that are shown.
    std::int32_t rowCount() const { return static_cast<std::int32_t>(shownLayout().rowCount()); }
    /// The number of the commit in a row below rowCount.
    std::int64_t commitInRow(std::int32_t row) const;
    /// Copies the graph beside a commit. Returns false when there is no such commit or it has no row.
    bool copyGraphRow(std::int64_t number, GraphRow& row);
    /// The largest number of columns that a row of the graph has so far.
    std::int32_t graphWidth() const { return shownLayout().widest(); }

    /// Shows only the commits that contain `text`; an empty text shows all. Returns false when no commit contains it: the shown
    /// rows stay as they are then, and the text waits for applyWaitingFilter.
    bool filter(cmROStringT text);
    /// Applies the waiting text when a commit that was added since the last look contains it. Returns whether it did. Most
    /// looks search only the new commits. The one that finds the text is followed by `filter`, which searches all again:
    /// that happens once a text, and so a filter is built in one place.
    bool applyWaitingFilter();
    /// Applies the current filter to the commits that were added after it was set. New rows follow the old ones, whose lines in
    /// the graph may change.
    void filterNewCommits();

private:
    /// A filter and the rows that it selects.
    struct Filter {
        Filter(cmROStringT wanted, const AllCommits& all, const CommitStore& store);
        cmStringT text;
        std::uint32_t commitCount;  ///< how many commits of the store were examined
        SomeCommits commits;
        GraphLayout layout{commits};
    };

    void addRecord(const GitLogRecord& record);
    bool exists(std::int64_t number) const { return number >= 0 && number < commitCount(); }
    std::int64_t rowOf(std::uint32_t number) const;
    void copyKnown(std::uint32_t number, GitCommitInfo& info) const;
    void addPendingBranches(std::uint32_t number, GitCommitInfo& info) const;
    const GraphLayout& shownLayout() const { return m_filter ? m_filter->layout : *m_layout; }

    const bool m_restricted;
    RecordOrder m_order;
    CommitStore m_store;
    BranchTable m_branches;
    TagTable m_tags;
    AncestorMarks m_onCurrentBranch;
    AllCommits m_all{m_store};
    AllCommits m_storedOnly{m_store, GraphParents::stored};
    const AllCommits* m_drawn = &m_all;  ///< what m_layout shows
    std::unique_ptr<GraphLayout> m_layout = std::make_unique<GraphLayout>(m_all);
    std::unique_ptr<GraphLayout> m_layoutAnew;  ///< of m_storedOnly, while finishLog builds it
    std::unique_ptr<Filter> m_filter;           ///< null when all commits are shown
    cmStringT m_waitingText;                    ///< of a filter that has found nothing yet; null without one
    std::uint32_t m_searched = 0;               ///< how many commits are known not to contain m_waitingText
};
