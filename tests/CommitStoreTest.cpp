#include "filewatcher/git/commits/CommitStore.h"

#include "filewatcher/git/commits/BranchTable.h"
#include "filewatcher/git/commits/GitLogOutput.h"
#include "filewatcher/git/commits/RecordOrder.h"
#include "filewatcher/git/commits/TagTable.h"
#include "tests/LogRecords.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <random>

using namespace std::string_literals;

namespace {

/// Adds a batch. Returns how many of its commits are new.
int addAll(CommitStore& store, cmROStringT batch)
{
    int added = 0;
    GitLogRecord found;
    while (takeGitLogRecord(batch, found))
        added += store.add(found);
    return added;
}

TEST(GitLogOutput, HandsOutCompleteRecordsUntilTheLogIsDone)
{
    GitLogOutput output;
    cmStringT records("old");
    const auto take = [&] {
        const int status = output.takeCompleteRecords(records);
        return std::to_string(status) + ":" + records.c_str();
    };
    EXPECT_EQ(take(), "0:");
    output.append("one\x01\nt");
    output.append("w\x01o\x01");
    EXPECT_EQ(take(), "0:one\x01\n");
    EXPECT_EQ(take(), "0:") << "the next byte tells whether this one ends the record";
    output.append("\nthr");
    EXPECT_EQ(take(), "0:tw\x01o\x01\n");
    output.append("ee\x01");
    GitLogOutput whole = output;
    for (const auto& [rest, last, isCut] : {std::tuple{"", "0:three\x01", false}, {"\ncut", "0:three\x01\n", true}}) {
        output = whole;
        output.append(rest);
        output.finish();
        EXPECT_EQ(take(), last);
        EXPECT_EQ(take(), "-1:");
        EXPECT_EQ(output.endsInsideRecord(), isCut);
    }
}

TEST(GitLogRecord, DropsRecordsThatAreNotWhole)
{
    const std::string text = "\n\n" + hashOf(1) + "\0\0"s
                             + "999999999\0\0A \x01\xC3\xBC\0a\tb\x01\x01\n\x01\ngar\0b\0a\0g\0e\x01\n"s + logRecord(2, {});
    cmROStringT batch = text;
    GitLogRecord found;
    ASSERT_TRUE(takeGitLogRecord(batch, found));
    EXPECT_EQ(found.hash, hashOf(1));
    EXPECT_EQ(found.time, 999999999);  // nine digits
    EXPECT_EQ(found.authorName, "A \x01\xC3\xBC");
    EXPECT_EQ(found.subject, "a\tb");
    ASSERT_TRUE(takeGitLogRecord(batch, found));
    EXPECT_EQ(found.hash, hashOf(2));
    EXPECT_FALSE(takeGitLogRecord(batch, found));
    EXPECT_EQ(parseCommitTime("x"), noCommitTime);
}

using Commits = std::vector<std::pair<int, std::vector<int>>>;

/// The numbers of a run in the order in which they are released when all have this time; each once.
std::vector<int> released(const Commits& run, RecordOrder order, std::int64_t time)
{
    std::vector<int> numbers;
    const auto sink = [&](const GitLogRecord& record) {
        const int number = std::stoi(std::string(record.hash.substr(30)), nullptr, 16);
        if (std::find(numbers.begin(), numbers.end(), number) == numbers.end())
            numbers.push_back(number);
        EXPECT_EQ(record.subject, "s");
    };
    for (const auto& [number, parents] : run) {
        std::string text = logRecord(number, parents);
        cmROStringT batch = text;
        GitLogRecord record;
        EXPECT_TRUE(takeGitLogRecord(batch, record));
        record.time = time;
        order.add(record, sink);
        order.keepTexts();
        text.assign(text.size(), 'x');
    }
    order.release(sink);
    return numbers;
}

/// The same, by the letter of the rule.
std::vector<int> placedSlowly(Commits run)
{
    std::vector<int> numbers;
    while (!run.empty()) {
        auto next = std::find_if(run.begin(), run.end(), [&run](const auto& commit) {
            return std::none_of(run.begin(), run.end(), [&commit](const auto& other) {
                return other.first != commit.first && std::ranges::count(other.second, commit.first) > 0;
            });
        });
        if (next == run.end())
            next = run.begin();
        numbers.push_back(next->first);
        run.erase(next);
    }
    return numbers;
}

TEST(RecordOrder, PlacesTheChildrenOfASecondAboveTheirParentsAndLosesNone)
{
    std::mt19937 random(1);
    for (int round = 0; round < 3000; ++round) {
        const int count = 1 + static_cast<int>(random() % 12);
        const auto any = [&] { return 1 + static_cast<int>(random() % static_cast<unsigned>(count + 3)); };
        Commits run;  // with cycles, parents outside the run, its own parent
        for (int number = 1; number <= count; ++number)
            run.push_back({number, random() % 3 == 0 ? std::vector<int>{any(), any()} : std::vector<int>{any()}});
        std::shuffle(run.begin(), run.end(), random);
        const std::vector<int> expected = placedSlowly(run);
        run.insert(run.begin() + 1 + static_cast<int>(random() % run.size()), {run.front().first, {any()}});  // repeated
        ASSERT_EQ(released(run, RecordOrder(true), round % 2 == 0 ? 1700000000 : noCommitTime), expected) << round;
    }
    EXPECT_EQ(released({{2, {3}}, {3, {}}, {1, {3}}}, RecordOrder(false), 1), (std::vector<int>{2, 3, 1}));
}

TEST(RecordOrder, HoldsOneSecondAndAThousandRecordsAtMost)
{
    RecordOrder order(true);
    std::string seen;
    const auto sink = [&seen](const GitLogRecord& record) { seen += record.hash; };
    order.add({"a", "", 5, {}, {}, {}}, sink);
    order.add({"b", "", 5, {}, {}, {}}, sink);
    EXPECT_EQ(seen, "");
    order.add({"c", "", 6, {}, {}, {}}, sink);
    EXPECT_EQ(seen, "ab");
    for (std::size_t held = 1; held < RecordOrder::mostHeld; ++held) {
        EXPECT_EQ(seen, "ab");
        order.add({"d", held == 1023 ? "c" : "", 6, {}, {}, {}}, sink);
    }
    EXPECT_EQ(seen.size(), 2 + RecordOrder::mostHeld);
    for (const char* const usual : {"main --since=1.week", "-- -g", "\"--author=x --reverse\"", "--reflog -n 4"})
        EXPECT_TRUE(keepsUsualOrder(usual)) << usual;
    for (const char* const other : {"main --reverse", "-g", "\"--walk-reflogs\" -- x", "--no-walk=unsorted main", "--no-walk"})
        EXPECT_FALSE(keepsUsualOrder(other)) << other;
}

TEST(BranchTable, NumbersTheCurrentBranchFirst)
{
    EXPECT_EQ(currentBranchIn("  a\r\n* (HEAD detached at 12)\r\n* b\n"), "(HEAD detached at 12)");
    EXPECT_TRUE(currentBranchIn("  a\n").isNull());
    GitRefs refs;
    const std::string one = hashOf(1);
    refs.read(one + " HEAD\n" + one + " refs/heads/z\n2 refs/heads/a/b\n3 refs/remotes/o/HEAD\n" + one
                  + " refs/remotes/o/a\n4 refs/remotes/z\n" + one + " refs/tags/t\nnonsense\n",
              "o");
    EXPECT_EQ(refs.nameAtHead(), "tags/t");
    const auto names = [&](cmROStringT current, const cmArray<std::int64_t>& numbersAtOne) {
        BranchTable table;
        table.setCurrentName(current);
        table.setCurrentEndHash("9");
        table.assign(refs);
        EXPECT_EQ(table.numbersAt(one), numbersAtOne);
        EXPECT_EQ(table.branch(-1), nullptr);
        std::string found;
        for (std::int64_t number = 0; const BranchInfo* branch = table.branch(number); ++number)
            found += branch->name.c_str() + "="s + branch->hash.c_str() + " ";
        return found;
    };
    EXPECT_EQ(names("z", {0, 2}), "z=" + one + " a/b=2 o/a=" + one + " z=4 ");  // a remote branch may be called like a local one
    EXPECT_EQ(names("(no branch)", {2, 3}), "(no branch)=9 a/b=2 z=" + one + " o/a=" + one + " z=4 ");
    EXPECT_TRUE(GitRefs().numbered("", "").empty());
}

TEST(TagTable, TakesWholeLinesOnly)
{
    TagTable table;
    const std::string one = hashOf(1);
    table.read(one + " refs/tags/b\n" + hashOf(2) + " refs/tags/b^{}\n" + one + " refs/tags/z\n" + one + " refs/heads/a\nx\n"
               + one + " refs/tags/c^{}\n" + hashOf(3) + " refs/tags/d\n" + hashOf(5)
               + " tag: refs/tags/y,, grafted, tag: refs/tags/x\n" + one + " refs/tags/cut");
    EXPECT_EQ(table.namesAt(one), (cmArray<cmStringT>{"c^{}", "z"}));
    EXPECT_EQ(table.namesAt(hashOf(2)), (cmArray<cmStringT>{"b"}));
    EXPECT_EQ(table.namesAt(hashOf(5)), (cmArray<cmStringT>{"x", "y,"}));
    EXPECT_EQ(table.namesAt(hashOf(4)), cmArray<cmStringT>());
}

TEST(GitDateTime, IsPackedAsTheEditorReadsIt)
{
    const GitDateTime packed = GitDateTime::pack({2026, 11, 21, 23, 59, 58});
    EXPECT_EQ(packed.first, 2026u | 11u << 14 | 21u << 22 | 23u << 27);
    EXPECT_EQ(packed.second, 59u | 58u << 6);
    EXPECT_EQ(packed.text(), "2026-11-21 23:59:58");
    for (const std::int64_t time : {454'900'000'000LL, 9'000'000'000'000'000'000LL})
        EXPECT_FALSE(GitDateTime::fromUnixTime(time).isSet()) << time;
}

TEST(CommitStore, AddsEachCommitOnceAndNoneWithoutAHash)
{
    CommitStore store;
    store.addWorkingCopy();
    EXPECT_EQ(addAll(store, logRecord(7, {8, 9}, "first") + logRecord(8, {}) + logRecord(7, {}, "again")
                                + logRecord(9, {}).substr(7) + "x" + logRecord(12, {}).substr(1) + logRecord(11, {})),
              3);
    EXPECT_EQ(store.subject(store.find(hashOf(7))), "first");
    GitCommitInfo info;
    store.copy(store.find(""), info);
    EXPECT_EQ(info.subject, "Uncomitted changes");
    EXPECT_TRUE(info.hash.isEmpty() && info.firstParent.isEmpty() && info.otherParents.empty() && !info.date.isSet());
    for (const std::string& unknown : {hashOf(9), hashOf(9).substr(0, 7), "7"s})  // the first occurs as a parent
        EXPECT_EQ(store.find(unknown), CommitStore::none) << unknown;
}

TEST(CommitStore, FindsEveryCommitByItsHashAndTheFirstOfSeveralByItsFirstDigits)
{
    CommitStore store;
    store.addWorkingCopy();
    constexpr int count = 5000;
    const auto subject = [](int number) {
        return std::string(static_cast<std::size_t>(number == count ? 1 << 20 : number % 300), 'x');
    };
    for (int number = count; number > 0; --number)
        addAll(store, logRecord(number, {number - 1}, subject(number)));
    for (int number = count; number > 0; --number) {
        const std::uint32_t found = store.find(hashOf(number));
        ASSERT_EQ(found, static_cast<std::uint32_t>(count - number + 1));
        ASSERT_EQ(store.subject(found), subject(number));
        ASSERT_EQ(store.find(hashOf(number).substr(0, 7)), static_cast<std::uint32_t>((count - number) % 1000 + 1));
    }
    EXPECT_EQ(store.authors().size(), 2u);
}

TEST(CommitStore, TheFirstHashDecidesTheLengthOfAll)
{
    const std::string a = hashOf(1) + std::string(23, '7') + "a";
    const std::string b = hashOf(1) + std::string(23, '7') + "b";
    const std::string rest = "\0"s + "1" + "\0\0\0\x01\n"s;
    const std::string ofLength[] = {logRecord(1, {}), a + '\0' + b + rest + b + '\0' + rest};
    for (const int first : {0, 1}) {
        CommitStore store;
        store.addWorkingCopy();
        EXPECT_EQ(addAll(store, ofLength[first] + ofLength[1 - first]), first + 1);
        EXPECT_EQ(store.find(hashOf(1)), first == 0 ? 1 : CommitStore::none);
        EXPECT_EQ(store.find(a.substr(0, 7)), 1u);
        EXPECT_EQ(store.find(b), first == 1 ? 2 : CommitStore::none);
        GitCommitInfo info;
        store.copy(1, info);
        EXPECT_EQ(info.hash.view(), first == 1 ? a : hashOf(1));
        EXPECT_EQ(info.firstParent.view(), first == 1 ? b : "");
    }
}

}  // namespace
