#include "filewatcher/git/commits/CommitStore.h"
#include "filewatcher/git/graph/AncestorMarks.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdio>
#include <ctime>
#include <string>
#include <vector>

using namespace std::string_literals;

namespace {

/// The hash of the commit that a test calls by a number; all have different first digits, but those 1000 apart.
std::string hash(int number)
{
    char digits[41];
    std::snprintf(digits, sizeof digits, "%07x%033x", number % 1000, number);
    return digits;
}

std::string record(int number, const std::vector<int>& parents, const std::string& subject = "s")
{
    std::string line = hash(number) + '\0';
    for (const int parent : parents)
        line += (line.back() == '\0' ? "" : " ") + hash(parent);
    return line + "\0001700000000\0ada@example.org\0Ada\0"s + subject + '\x01';
}

/// Adds a batch; how many of its commits are new.
int addAll(CommitStore& store, cmROStringT batch)
{
    int added = 0;
    GitLogRecord found;
    while (takeGitLogRecord(batch, found))
        added += store.add(found);
    return added;
}

TEST(GitLogRecord, TakesRecordsApart)
{
    const std::string text = "\n\n" + hash(1) + '\0' + hash(2) + ' ' + hash(3)
                             + "\0999999999\0\0A \xC3\xBC <b>\0a\tsubject\x01\n\x01gar\0bage\x01"s + record(2, {});
    cmROStringT batch = text;
    GitLogRecord found;
    ASSERT_TRUE(takeGitLogRecord(batch, found));
    EXPECT_EQ(found.hash, hash(1));
    EXPECT_EQ(found.parents, hash(2) + " " + hash(3));
    EXPECT_EQ(found.time, 999999999);  // nine digits
    EXPECT_EQ(found.authorEmail, "");
    EXPECT_EQ(found.authorName, "A \xC3\xBC <b>");
    EXPECT_EQ(found.subject, "a\tsubject");
    ASSERT_TRUE(takeGitLogRecord(batch, found));
    EXPECT_EQ(found.hash, hash(2));
    EXPECT_EQ(found.parents, "");
    EXPECT_EQ(found.time, 1700000000);
    EXPECT_FALSE(takeGitLogRecord(batch, found));
}

TEST(GitDateTime, IsPackedAsTheEditorReadsIt)
{
    const GitDateTime packed = GitDateTime::pack({2026, 11, 21, 23, 59, 58});
    EXPECT_EQ(packed.first, 2026u | 11u << 14 | 21u << 22 | 23u << 27);
    EXPECT_EQ(packed.second, 59u | 58u << 6);
    for (const std::int64_t time : {1'000'000'000LL, 1'700'000'000LL, 4'000'000'000LL}) {
        const cmDateTime local = GitDateTime::fromUnixTime(time).unpacked();
        std::tm fields{};
        fields.tm_year = local.year - 1900;
        fields.tm_mon = local.month - 1;
        fields.tm_mday = local.day;
        fields.tm_hour = local.hour;
        fields.tm_min = local.minute;
        fields.tm_sec = local.second;
        fields.tm_isdst = -1;
        EXPECT_EQ(std::mktime(&fields), time);
    }
    for (const std::int64_t time : {1'000'000'000'000LL, 9'000'000'000'000'000'000LL})
        EXPECT_EQ(GitDateTime::fromUnixTime(time), GitDateTime()) << time;
    EXPECT_FALSE(GitDateTime().isSet());
}

TEST(CommitStore, GivesBackWhatCame)
{
    CommitStore store;
    store.addWorkingCopy();
    EXPECT_EQ(addAll(store, record(7, {8, 9, 10}, "first") + record(8, {}) + record(7, {}, "again") + "no hash"
                                + record(9, {}).substr(7) + record(11, {})),
              3);
    ASSERT_EQ(store.count(), 4u);
    GitCommitInfo info;
    store.copy(store.find(hash(7)), info);
    EXPECT_EQ(info.hash, cmStringT(hash(7)));
    EXPECT_EQ(info.firstParent, cmStringT(hash(8)));
    EXPECT_EQ(info.otherParents, (cmArray<cmStringT>{cmStringT(hash(9)), cmStringT(hash(10))}));
    EXPECT_EQ(info.authorName, "Ada");
    EXPECT_EQ(info.authorEmail, "ada@example.org");
    EXPECT_EQ(info.subject, "first");
    EXPECT_EQ(info.date, GitDateTime::fromUnixTime(1700000000));
    store.copy(store.find(""), info);
    EXPECT_EQ(info.subject, "Uncomitted changes");
    EXPECT_TRUE(info.hash.isEmpty() && info.firstParent.isEmpty() && info.otherParents.empty() && !info.date.isSet());
    EXPECT_EQ(store.find(hash(9)), CommitStore::none);  // a parent that has not come
    EXPECT_EQ(store.find(hash(9).substr(0, 7)), CommitStore::none);
    EXPECT_EQ(store.find("7"), CommitStore::none);
}

TEST(CommitStore, FindsEveryCommitByItsHashAndTheFirstOfSeveralByItsFirstDigits)
{
    CommitStore store;
    store.addWorkingCopy();
    constexpr int count = 5000;
    for (int number = count; number > 0; --number)
        addAll(store, record(number, {number - 1}, std::string(static_cast<std::size_t>(number) % 300, 'x')));
    addAll(store, record(count + 1, {}, std::string(1 << 20, 'y')) + record(count + 2, {}, "after a long one"));
    for (int number = count; number > 0; --number) {
        const std::uint32_t found = store.find(hash(number));
        ASSERT_EQ(found, static_cast<std::uint32_t>(count - number + 1));
        ASSERT_EQ(store.subject(found), std::string(static_cast<std::size_t>(number) % 300, 'x'));
        ASSERT_EQ(store.find(hash(number).substr(0, 7)), static_cast<std::uint32_t>((count - number) % 1000 + 1));
    }
    EXPECT_EQ(store.subject(store.count() - 2).size(), 1u << 20);
    EXPECT_EQ(store.subject(store.count() - 1), "after a long one");
    EXPECT_EQ(store.authors().size(), 2u);
}

TEST(AncestorMarks, ReachAllAncestorsInWhateverOrderCommitsCome)
{
    // 1 is marked; 2 and 3 are its parents, 4 theirs, 5 is 4's; 6 is a child of 4, 7 stands alone.
    std::vector<std::string> records{record(1, {2, 3}), record(2, {4}), record(3, {4}), record(4, {5}),
                                     record(5, {}),     record(6, {4}), record(7, {})};
    std::sort(records.begin(), records.end());
    do {
        CommitStore store;
        AncestorMarks marks;
        marks.markStart(store.intern(hash(1)));
        for (const std::string& text : records) {
            addAll(store, text);
            marks.onCommitAdded(store, store.count() - 1);
        }
        for (int number = 1; number <= 7; ++number)
            ASSERT_EQ(marks.isMarked(store.intern(hash(number))), number <= 5) << number;
    } while (std::next_permutation(records.begin(), records.end()));
}

}  // namespace
