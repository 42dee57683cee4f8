#include "filewatcher/git/GitQuotedName.h"
#include "filewatcher/git/query/GitCommitText.h"
#include "filewatcher/git/query/GitDiff.h"
#include "filewatcher/git/query/GitHistory.h"
#include "filewatcher/status/GitPorcelain.h"

#include <gtest/gtest.h>

#include <string>

namespace {

using Texts = cmArray<cmStringT>;
using namespace std::string_literals;

/// A diff as text: for each file its path in brackets, with what else is told of it, and its hunks, each as its ranges and the
/// lines after bars.
std::string shown(cmROStringT diff)
{
    std::string text;
    for (const GitDiffFile& file : parseGitDiff(diff)) {
        text += "["s + file.path.c_str() + (file.oldPath.isNull() ? "" : "<"s + file.oldPath.c_str());
        text += file.oldMode == file.newMode ? "" : " "s + file.oldMode.c_str() + ">" + file.newMode.c_str();
        text += (file.binary ? " binary" : ""s) + (file.combined ? " combined]" : "]");
        for (const GitDiffHunk& hunk : file.hunks) {
            for (const GitLineRange& range : hunk.oldRanges)
                text += std::to_string(range.start) + " " + std::to_string(range.count) + " ";
            text += std::to_string(hunk.newRange.start) + " " + std::to_string(hunk.newRange.count) + " ";
            for (const cmStringT& line : hunk.lines)
                text += "|" + std::string(line.view());
        }
    }
    return text;
}

TEST(GitQuotedName, IsUnescaped)
{
    EXPECT_EQ(gitNameOnLine(R"("\a\b\t\n\v\f\r\"\\\303\274")"), "\a\b\t\n\v\f\r\"\\\xC3\xBC");
    EXPECT_EQ(gitNameOnLine(R"("cut\)"), "cut\\");
    EXPECT_EQ(gitNameOnLine(R"("cut\30")"), "cut30");
    EXPECT_EQ(gitNameOnLine(R"(a\tb")"), R"(a\tb")");
}

TEST(GitPorcelain, ReadsColumnsAndNames)
{
    const auto entries = [](cmROStringT output) {
        Texts texts;
        for (const GitPorcelainEntry& entry : parseGitPorcelain(output))
            texts.emplace_back(std::string{entry.indexState, entry.workTreeState, ' '} + entry.path.c_str());
        return texts;
    };
    EXPECT_EQ(entries(" M a.txt\nMM dir/b\n?? new\n M cut"), (Texts{" M a.txt", "MM dir/b", "?? new"}));
    EXPECT_EQ(entries("\n M\nfatal\n M \n M a\n M \"t\\tq\\\"\"\n"), (Texts{" M a", " M t\tq\""}));
    EXPECT_EQ(entries("RM old -> new\nRM \"o -> l\" -> \"n -> w\"\nRM old -> \"n w\"\n M \"a -> b\"\n"),
              (Texts{"RM new", "RM n -> w", "RM n w", " M a -> b"}));
}

TEST(GitDiff, ParsesEveryKindOfChange)
{
    EXPECT_EQ(shown("diff --git a/f b/f\nindex 1..2 100644\n--- a/f\n+++ b/f\n@@ -1,2 +1,2 @@ int f()\n--- a/x\n+++ b/y\n \n"
                    "@@ -9 +9,0 @@\n-z\r\n\\ No newline at end of file\ndiff --git a/sub/g b/sub/g\n--- a/sub/g\n+++ b/sub/g\n"
                    "@@ -0,0 +1 @@\n+1\n"),
              "[f]1 2 1 2 |--- a/x|+++ b/y| 9 1 9 0 |-z\r|\\ No newline at end of file[sub/g]0 0 1 1 |+1");
    EXPECT_EQ(shown("diff --git a/o b/n\nsimilarity index 100%\nrename from o\nrename to n\n"), "[n<o]");
    EXPECT_EQ(shown("diff --git a/bin b/bin\nnew file mode 1\nindex 1..2\nBinary files /dev/null and b/bin differ\n"),
              "[bin >1 binary]");
    EXPECT_EQ(shown("diff --git a/a b b/a b\nold mode 100755\nnew mode 100644\n"), "[a b 100755>100644]");
    EXPECT_EQ(shown("diff --git a/a b b/a b\n--- a/a b\t\n+++ b/a b\t\n@@ -1 +1 @@\n-1\n+2\n"), "[a b]1 1 1 1 |-1|+2");
    EXPECT_EQ(shown(R"(diff --git "a/q\"\303\274" "b/q\"\303\274")"), "[q\"\xC3\xBC]");
    EXPECT_EQ(shown("diff --git a/t b/t\ndeleted file mode 100644\n--- a/t\n+++ /dev/null\n@@ -1 +0,0 @@\n-f\n"
                    "diff --git a/t b/t\nnew file mode 120000\n--- /dev/null\n+++ b/t\n@@ -0,0 +1 @@\n+l\n"),
              "[t 100644>120000]1 1 0 0 |-f0 0 1 1 |+l");
}

TEST(GitDiff, ParsesACombinedDiffOfAnyNumberOfParents)
{
    const std::string two =
        "diff --cc a b\nindex 1,2..3\nmode 100644,100755..100755\n--- a/a b\n+++ b/a b\n@@@ -1,3 -7,2 +1,2 @@@\n"
        "  1\n- --- x\n--y\n +z\n@@@ -9 -9,0 +9,0 @@@\n- -\n";
    const std::string three =
        "diff --combined \"q\\\"\"\ndeleted file mode 1,2,3\nBinary files differ\n@@@@ -1 -1 -1 +0,0 @@@@\n-- a\n  -b\n";
    const std::string first = "[a b 100644,100755>100755 combined]1 3 7 2 1 2 |  1|- --- x|--y| +z9 1 9 0 9 0 |- -";
    EXPECT_EQ(shown(two + three), first + "[q\" 1,2,3> binary combined]1 1 1 1 1 1 0 0 |-- a|  -b");
    for (std::size_t length = 0; length < three.size(); ++length) {
        EXPECT_TRUE(shown(two + three.substr(0, length)).starts_with(first));
        for (const char damage : "\n@ -\xFF")
            EXPECT_TRUE(shown(two + std::string(three).replace(length, 1, 1, damage)).starts_with(first) || length == 0);
    }
}

TEST(GitDiff, SkipsWhatItCannotParse)
{
    EXPECT_EQ(shown("diff --git \"a\n--- a\n+++ \n@@ -1 +1 @@\n"), "");
    EXPECT_EQ(shown("@@ -1 +1 @@\n-lost\n* Unmerged path x\n"), "");
    EXPECT_EQ(shown("diff --git a/f b/f\n--- a/f\n+++ b/f\n@@ -1,9 +1,9 @@\n a\n\n"), "[f]1 9 1 9 | a| ");
    EXPECT_EQ(
        shown("diff --git a/f b/f\n--- a/f\n+++ b/f\n@@ -99999999999 +1 @@\n-a\n@@ -1,x +1 @@\ndiff --cc g\n@@@ -1 -1 +1 @@\n"),
        "[f][g combined]");
}

TEST(GitHistory, SeparatesMessagesFromFileNames)
{
    const std::string output = "aaaaaaaaa\0p1 p2 p3\0"s + "86400\0a@b\0Ada\0merge\0merge\n\x01\n"s + "bbbbbbbbb\0\0"s
                               + "1\0\0B \x01 B\0odd\0odd \x01\n\ncccccccc\n\x01\nf\n\"q\\\"\"\n\n"s + "ddd\0p\0"s
                               + "1\0e\0n\0s\0cut"s;
    const cmArray<GitHistoryRecord> records = parseGitHistory(output);
    ASSERT_EQ(records.size(), 2u);
    EXPECT_EQ(records[0].commit.hash, "aaaaaaaaa");
    EXPECT_EQ(records[0].commit.firstParent, "p1");
    EXPECT_EQ(records[0].commit.otherParents, (Texts{"p2", "p3"}));
    EXPECT_EQ(records[0].commit.message, "merge\n");
    EXPECT_TRUE(records[0].files.empty());
    EXPECT_EQ(records[1].commit.authorName, "B \x01 B");
    EXPECT_EQ(records[1].commit.message, "odd \x01\n\ncccccccc\n");
    EXPECT_EQ(records[1].files, (Texts{"f", "q\""}));
}

TEST(GitCommitText, TellsTheFilesOfAMergeByParentAndItsMessageOnce)
{
    const auto read = [](cmROStringT output) { return parseFilesByParent(output, "abc", {"1", "2", "3"}); };
    EXPECT_EQ(read("lost\nabc (from 3) s\n\"q\\\"\"\nabc (fr\nabc (from 1) a (from 2)\nf\n\nabc (from 4) s\nx"),
              (cmArray<Texts>{{"f"}, {}, {"q\"", "abc (fr"}}));
    const GitCommitText merge = parseGitCommitText("s\n\nother\n\n\0\ns\n\ns\n\nother\n\n\0\ng\nother\n"s);
    EXPECT_EQ(merge.message, (Texts{"s", "", "other", ""}));
    EXPECT_EQ(merge.files, (Texts{"s", "g", "other"}));
    EXPECT_TRUE(parseGitCommitText("\n\0"s).files.empty());
    EXPECT_EQ(parseGitCommitText("js\n\0\napp.js\n"s).files, (Texts{"app.js"}));  // not a repeated message
}

}  // namespace
