#include "common/cmDateTime.h"
#include "common/cmPath.h"

#include <gtest/gtest.h>

namespace {

constexpr cmPathStyle posix = cmPathStyle::posix;
constexpr cmPathStyle windows = cmPathStyle::windows;

cmStringT relative(cmROStringT path, cmROStringT directory, cmPathStyle style)
{
    cmROStringT rest = "<outside>";
    cmRelativePath(path, directory, rest, style);
    return rest;
}

TEST(Path, FindsTheRestBelowADirectory)
{
    EXPECT_EQ(relative("/a/b/c", "/a/b", posix), "c");
    EXPECT_EQ(relative("/a/b", "/a/b", posix), "");
    EXPECT_EQ(relative("/a", "/", posix), "a");
    EXPECT_EQ(relative("/a/bc", "/a/b", posix), "<outside>");
    EXPECT_EQ(relative("/A/b", "/a", posix), "<outside>");
    EXPECT_EQ(relative("/a", "", posix), "<outside>");
    EXPECT_EQ(relative(R"(c:\Work\src)", R"(C:\work)", windows), "src");
    EXPECT_EQ(relative(R"(C:\src)", R"(C:\)", windows), "src");
    EXPECT_EQ(relative(R"(C:\workshop)", R"(C:\work)", windows), "<outside>");
}

TEST(Path, IsTakenApartAndPutTogether)
{
    EXPECT_EQ(cmWithoutTrailingSeparator("/a/b/", posix), "/a/b");
    EXPECT_EQ(cmWithoutTrailingSeparator("/", posix), "/");
    EXPECT_EQ(cmWithoutTrailingSeparator("/a\\", posix), "/a\\");
    EXPECT_EQ(cmWithoutTrailingSeparator(R"(C:\a\)", windows), R"(C:\a)");
    EXPECT_EQ(cmWithoutTrailingSeparator(R"(C:\)", windows), R"(C:\)");
    EXPECT_EQ(cmWithoutTrailingSeparator("", windows), "");

    EXPECT_EQ(cmJoinPath("/a", "b", posix), "/a/b");
    EXPECT_EQ(cmJoinPath("/", "b", posix), "/b");
    EXPECT_EQ(cmJoinPath(R"(C:\a)", "b", windows), R"(C:\a\b)");
    EXPECT_EQ(cmNativeSeparators("C:/a/b c", windows), R"(C:\a\b c)");
    EXPECT_EQ(cmNativeSeparators("/a\\b", posix), "/a\\b");

    EXPECT_EQ(cmDirectoryOf("/a/b", posix), "/a");
    EXPECT_EQ(cmDirectoryOf("/a", posix), "/");
    EXPECT_EQ(cmDirectoryOf("a", posix), "");
    EXPECT_EQ(cmDirectoryOf("C:\\a", windows), "C:\\");
    EXPECT_EQ(cmDirectoryOf("C:\\a/b", windows), "C:\\a");
    EXPECT_EQ(cmFileNameOf("C:\\a/b", windows), "b");
    EXPECT_EQ(cmFileNameOf("/a\\b", posix), "a\\b");

    EXPECT_EQ(cmWithoutVerbatimPrefix(R"(\\?\C:\a)", windows), R"(C:\a)");
    EXPECT_EQ(cmWithoutVerbatimPrefix(R"(\\?\UNC\server\share)", windows), R"(\\server\share)");
    EXPECT_EQ(cmWithoutVerbatimPrefix(R"(\\?\C:\a)", posix), R"(\\?\C:\a)");
}

TEST(Path, KnowsAbsolutePaths)
{
    for (const char* path : {"C:\\a", "c:/a", R"(\\server\share)"})
        EXPECT_TRUE(cmIsAbsolutePath(path, windows)) << path;
    for (const char* path : {"//server/share", R"(\\server\share)", R"(\/server)"})
        EXPECT_TRUE(cmIsNetworkPath(path, windows) && !cmIsNetworkPath(path, posix)) << path;
    for (const char* path : {"C:\\a", "C:/a", "/a", ""})
        EXPECT_FALSE(cmIsNetworkPath(path, windows)) << path;
    for (const char* path : {"C:a", "\\a", "/a", "a", ""})
        EXPECT_FALSE(cmIsAbsolutePath(path, windows)) << path;
}

TEST(DateTime, CountsFileTimesFrom1601)
{
    EXPECT_EQ(cmUTCTimeOfUnixTime(0), 116'444'736'000'000'000);
    EXPECT_EQ(cmUTCTimeOfUnixTime(1, 250), 116'444'736'010'000'002);
    EXPECT_EQ(cmUnixTimeOfUTCTime(116'444'736'019'999'999), 1);
    EXPECT_EQ(cmDateTimeText({2024, 2, 9, 3, 4, 5}), "2024-02-09 03:04:05");
}

}  // namespace
