#include "filewatcher/git/browser/ShownHistory.h"

#include "tests/LogRecords.h"

#include <gtest/gtest.h>

namespace {

using Rows = std::vector<std::int64_t>;
using Columns = std::vector<std::uint16_t>;
const auto neverStop = [] { return false; };

class ShownHistoryTest : public testing::Test {
protected:
    /// The current branch, main, merges side, whose commits are listed in the wrong order; extra is not merged.
    void load()
    {
        GitRefs refs;
        refs.read(hashOf(2) + " HEAD\n" + hashOf(2) + " refs/heads/main\n" + hashOf(1) + " refs/heads/extra\n", "o");
        history.branches().setCurrentName("main");
        history.setRefs(refs, false);
        add(logRecord(1, {3}, "Extra") + logRecord(2, {3, 6}, "merge", "\xC3\x96", "oz@example.org") + logRecord(3, {}));
        add(logRecord(4, {}, "on the Side", "Grace H", "g@x") + logRecord(5, {4}) + logRecord(6, {5, 3}, "late", "B", "b"));
    }
    void add(cmROStringT batch) { EXPECT_FALSE(history.addRecords(batch, 100, neverStop)); }
    GitCommitInfo commit(std::int64_t number) const
    {
        GitCommitInfo info;
        EXPECT_TRUE(history.copyCommit(number, info)) << number;
        return info;
    }
    Rows rows() const
    {
        Rows numbers;
        for (std::int32_t row = 0; row < history.rowCount(); ++row)
            numbers.push_back(history.commitInRow(row));
        return numbers;
    }
    Columns columns()
    {
        Columns found;
        for (const std::int64_t number : rows()) {
            EXPECT_TRUE(history.copyGraphRow(number, graphRow)) << number;
            found.push_back(graphRow.column);
        }
        return found;
    }

    ShownHistory history;
    GraphRow graphRow;
};

TEST_F(ShownHistoryTest, AddsRecordsUpToTheLimitAndNoneOnceAStopIsRequested)
{
    const std::string log = logRecord(1, {2}) + logRecord(2, {3}) + logRecord(3, {});
    cmROStringT batch = log;
    int asked = 0;
    EXPECT_FALSE(history.addRecords(batch, 9, [&asked] { return ++asked > 1; }));
    EXPECT_EQ(rows(), (Rows{0, 1}));  // the working copy and one
    ASSERT_EQ(commit(1).pendingBranches.size(), 1u);
    EXPECT_EQ(commit(1).pendingBranches[0].parent, cmStringT(hashOf(2)));
    EXPECT_TRUE(history.addRecords(batch, 1, neverStop));
    EXPECT_EQ(rows(), (Rows{0, 1, 2}));
    EXPECT_TRUE(commit(1).pendingBranches.empty());
    EXPECT_FALSE(history.addRecords(batch, 9, neverStop));
    EXPECT_EQ(history.commitCount(), 4);
}

TEST_F(ShownHistoryTest, JoinsTheWorkingCopyToHead)
{
    load();
    EXPECT_EQ(columns(), (Columns{0, 1, 0, 0, 1, 0, 2}));
    const auto stub = GraphEdgeKind::stub;  // its parents are above it
    EXPECT_EQ(graphRow.edges,
              (cmArray<GraphEdge>{
                  {2, 2, GraphEdgeKind::ends}, {2, 2, stub, 5, cmStringT(hashOf(5))}, {2, 2, stub, 3, cmStringT(hashOf(3))}}));
    EXPECT_EQ(commit(0).branchNumbers, cmArray<std::int64_t>{0});
    EXPECT_EQ(commit(0).pendingBranches[0].parent, cmStringT(hashOf(2)));
    for (const std::int64_t number : {0, 1, 2, 3, 4, 5, 6})
        EXPECT_EQ(commit(number).onCurrentBranch, number == 1 ? 0 : 1) << number;
}

TEST_F(ShownHistoryTest, AFilterShowsTheCommitsThatContainItsTextAndTheLinesBetweenThem)
{
    load();
    const std::pair<std::string, Rows> cases[] = {
        {"RA", {1, 4}},      {"oz@EXAMPLE", {2}}, {hashOf(4).substr(5, 3), {4}}, {"00000", {1, 2, 3, 4, 5, 6}}, {"the side", {4}},
        {"uncomitted", {0}}, {"ada@", {1, 3, 5}}};
    for (const auto& [text, expected] : cases) {
        EXPECT_TRUE(history.filter(text)) << text;
        EXPECT_EQ(rows(), expected) << text;
    }
    EXPECT_FALSE(history.filter("ada@example.orgy"));
    EXPECT_EQ(rows(), (Rows{1, 3, 5})) << "a filter that finds nothing changes nothing";
    EXPECT_EQ(columns(), (Columns{0, 0, 1}));
    EXPECT_TRUE(graphRow.edges.empty()) << "a line to a commit that is not shown";
    EXPECT_EQ(history.graphWidth(), 2);
    EXPECT_EQ(commit(3).row, 1);
    EXPECT_TRUE(commit(1).pendingBranches.empty());
    EXPECT_EQ(commit(0).row, -1) << "the working copy can be read without a row";
    GitCommitInfo info;
    for (const std::int64_t number : {-1, 2, 7})
        EXPECT_FALSE(history.copyCommit(number, info) || history.copyGraphRow(number, graphRow)) << number;
    EXPECT_TRUE(history.findCommit(hashOf(2), info));

    add(logRecord(7, {}, "by Ada@", "B", "b") + logRecord(8, {}, "t", "B", "b"));
    EXPECT_EQ(rows(), (Rows{1, 3, 5}));
    history.filterNewCommits();
    EXPECT_EQ(rows(), (Rows{1, 3, 5, 7}));
    EXPECT_FALSE(history.filter("later"));
    add(logRecord(9, {}));
    EXPECT_FALSE(history.applyWaitingFilter());
    add(logRecord(10, {}, "Later"));
    EXPECT_TRUE(history.applyWaitingFilter());
    EXPECT_FALSE(history.applyWaitingFilter());
    EXPECT_EQ(rows(), Rows{10});
    EXPECT_TRUE(history.filter(""));
    EXPECT_EQ(history.rowCount(), 11);
}

}  // namespace
