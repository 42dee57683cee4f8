#include "filewatcher/git/browser/ShownHistory.h"

#include "tests/GraphHistory.h"
#include "tests/LogRecords.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <random>

namespace {

using Rows = std::vector<std::int64_t>;
using Columns = std::vector<std::uint16_t>;
const auto neverStop = [] { return false; };

void setRefs(ShownHistory& history, const std::string& output)
{
    GitRefs refs;
    refs.read(output, "o");
    BranchTable branches;
    branches.setCurrentName("main");
    branches.assign(refs);
    history.setBranches(std::move(branches));
}

class ShownHistoryTest : public testing::Test {
protected:
    /// The current branch, main, merges side, whose commits are listed in the wrong order; extra is not merged.
    void load()
    {
        setRefs(history, hashOf(2) + " HEAD\n" + hashOf(2) + " refs/heads/main\n" + hashOf(1) + " refs/heads/extra\n");
        add(logRecord(1, {3}, "Extra") + logRecord(2, {3, 6}, "merge", "\xC3\x96", "oz@example.org") + logRecord(3, {})
            + logRecord(4, {}, "on the Side", "Grace H", "g@x") + logRecord(5, {4}) + logRecord(6, {5, 3}, "late", "B", "b"));
    }
    /// Adds a batch that the log ends with.
    void add(cmROStringT batch)
    {
        EXPECT_FALSE(history.addRecords(batch, 100, neverStop));
        EXPECT_FALSE(history.finishLog(1));
    }
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
    std::string log = logRecord(1, {2}) + logRecord(2, {3}) + logRecord(3, {4});
    cmROStringT batch = log;
    int asked = 0;
    EXPECT_TRUE(history.addRecords(batch, 1, neverStop));
    EXPECT_EQ(history.commitCount(), 1) << "the working copy; the second of the other may not be over";
    EXPECT_FALSE(history.addRecords(batch, 9, [&asked] { return ++asked > 1; }));
    history.catchUp();
    EXPECT_EQ(rows(), (Rows{0, 1}));
    ASSERT_EQ(commit(1).pendingBranches.size(), 1u);
    EXPECT_EQ(commit(1).pendingBranches[0].parent, cmStringT(hashOf(2)));
    EXPECT_TRUE(history.addRecords(batch, 1, neverStop));
    EXPECT_EQ(rows(), (Rows{0, 1})) << "rows are laid out behind the commits";
    log.assign(log.size(), 'x');
    std::string rest;
    for (int number = 4; number <= 40; ++number)
        rest += logRecord(number, {number + 1});
    add(rest);
    EXPECT_EQ(history.rowCount(), 41);
    EXPECT_EQ(commit(3).hash, cmStringT(hashOf(3))) << "it was held when the text of its batch went";
    EXPECT_TRUE(commit(3).pendingBranches.empty());
}

TEST_F(ShownHistoryTest, ARestrictedLogIsLaidOutAnewWithoutTheParentsThatNeverCame)
{
    ShownHistory restricted("main");
    setRefs(restricted, hashOf(3) + " HEAD\n");
    std::string log;
    for (int number = 1; number <= 100; ++number)
        log += logRecord(number, {number + 500, number % 9 == 0 ? number + 9 : number + 600}, number == 4 ? "four" : "s");
    cmROStringT batch = log;
    EXPECT_FALSE(restricted.addRecords(batch, 1000, neverStop));
    EXPECT_EQ(restricted.graphWidth(), 7);
    EXPECT_FALSE(restricted.filter("waits"));
    EXPECT_TRUE(restricted.filter("four"));
    int calls = 1;
    while (restricted.finishLog(8))
        ++calls;
    EXPECT_GT(calls, 5) << "in short steps";
    EXPECT_EQ(restricted.rowCount(), 1) << "the filter goes on";
    EXPECT_TRUE(restricted.filter(""));
    ASSERT_EQ(restricted.rowCount(), 101);
    EXPECT_EQ(restricted.graphWidth(), 3);
    const auto edgesAt = [&](std::int64_t number) {
        EXPECT_TRUE(restricted.copyGraphRow(number, graphRow));
        return graphRow.edges;
    };
    EXPECT_EQ(edgesAt(0), (cmArray<GraphEdge>{{0, 0, GraphEdgeKind::begins}})) << "HEAD is in the log";
    EXPECT_EQ(edgesAt(3), (cmArray<GraphEdge>{{0, 0, GraphEdgeKind::ends}}));
    EXPECT_TRUE(edgesAt(4).empty());
    EXPECT_EQ(edgesAt(9), (cmArray<GraphEdge>{{0, 0, GraphEdgeKind::begins}}));
    GitCommitInfo info;
    EXPECT_TRUE(restricted.copyCommit(4, info));
    EXPECT_TRUE(info.pendingBranches.empty());
    EXPECT_EQ(info.firstParent, cmStringT(hashOf(504)));
}

TEST_F(ShownHistoryTest, KeepsTheOrderOfALogThatIsReversed)
{
    ShownHistory reversed("--reverse");
    const std::string log = logRecord(1, {});
    cmROStringT batch = log;
    EXPECT_FALSE(reversed.addRecords(batch, 100, neverStop));
    EXPECT_EQ(reversed.commitCount(), 2) << "no record is held back";
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

/// Compares the rows that are shown with the slow layout's. `parents` are those of each number, and of 0 the commit of HEAD.
/// `known` is as there; rows that it lacks were laid out when the log had ended.
void expectSlowLayout(ShownHistory& shown, const std::vector<std::vector<int>>& parents, std::vector<std::uint32_t> known = {})
{
    GraphRows rows(static_cast<std::size_t>(shown.rowCount()));
    History shownParents(rows.size());
    std::vector<cmStringT> hashes;
    GitCommitInfo info;
    for (std::uint32_t row = 0; row < rows.size(); ++row) {
        const std::int64_t commit = shown.commitInRow(static_cast<std::int32_t>(row));
        ASSERT_TRUE(shown.copyCommit(commit, info) && shown.copyGraphRow(commit, rows[row]));
        hashes.push_back(info.hash);
        const int number = commit == 0 ? 0 : std::stoi(info.hash.c_str() + 30, nullptr, 16);
        for (const int parent : parents[static_cast<std::size_t>(number)]) {
            if (shown.findCommit(hashOf(parent), info) && info.row >= 0)
                shownParents[row].push_back(static_cast<std::uint32_t>(info.row));
        }
    }
    known.resize(rows.size(), GraphNode::noRow);
    GraphRows expected = slowGraphLayout(shownParents, GraphLayout::longLine, known);
    for (GraphRow& row : expected) {
        for (GraphEdge& edge : row.edges) {
            ASSERT_NE(edge.kind, GraphEdgeKind::stub) << "a parent above its child";
            edge.otherHash = edge.otherHash.isEmpty() ? cmStringT() : hashes[static_cast<std::size_t>(edge.other)];
        }
    }
    expectSame(rows, expected);
}

TEST_F(ShownHistoryTest, ShowsTheLinesOfTheSlowLayoutWhateverTheLog)
{
    std::mt19937 random(5);
    const auto below = [&random](int end) { return static_cast<int>(random() % static_cast<unsigned>(end)); };
    for (int round = 0; round < 20 && !HasFailure(); ++round) {
        SCOPED_TRACE(round);
        const bool restricted = round % 2 == 1;
        constexpr int count = 1500;
        std::vector<std::vector<int>> parents{{1 + below(count)}};
        std::vector<std::string> log;
        for (int first = 1; first <= count; first = static_cast<int>(parents.size())) {
            const auto start = std::ssize(log);
            for (int left = 1 + below(below(8) == 0 ? 900 : 4); left > 0 && parents.size() <= count; --left) {
                const auto number = static_cast<int>(parents.size());
                std::vector<int>& of = parents.emplace_back();
                for (int wanted = below(3) == 0 ? below(4) : 1; wanted > 0; --wanted)
                    of.push_back(number + wanted + 3 * below(below(5) == 0 ? 90 : 3));
                std::erase_if(of, [&](int parent) { return !restricted && parent > count; });
                if (!restricted || below(4) != 0)
                    log.push_back(logRecord(number, of, below(3) == 0 ? "some" : "s", "A", "a", first));
            }
            std::shuffle(log.begin() + start, log.end(), random);  // parents above their children, all in one second
        }
        ShownHistory shown(restricted ? "main" : "");
        setRefs(shown, hashOf(parents[0][0]) + " HEAD\n");
        std::vector<std::uint32_t> known;
        for (std::size_t next = 0; next < log.size();) {
            std::string piece;
            for (int left = 1 + below(100); left > 0 && next < log.size(); --left)
                piece += log[next++];
            cmROStringT batch = piece;
            while (shown.addRecords(batch, 1 + below(60), neverStop)) {
            }
            known.resize(static_cast<std::size_t>(shown.rowCount()), GraphNode::noRow);
            if (below(4) == 0) {
                shown.catchUp();
                known.resize(static_cast<std::size_t>(shown.rowCount()), static_cast<std::uint32_t>(shown.commitCount()));
            }
        }
        while (shown.finishLog(static_cast<std::uint32_t>(1 + below(300)))) {
        }
        expectSlowLayout(shown, parents, restricted ? std::vector<std::uint32_t>() : known);
        EXPECT_TRUE(shown.filter("some"));
        expectSlowLayout(shown, parents);
    }
}

}  // namespace
