#include "filewatcher/status/PerforceOutput.h"

#include <gtest/gtest.h>

namespace {

using Files = cmArray<cmStringT>;
constexpr cmPathStyle posix = cmPathStyle::posix;
constexpr cmPathStyle windows = cmPathStyle::windows;

TEST(PerforceOutput, ReadsTheWorkspaceFromItsForm)
{
    const WatchedSpelling elsewhere("/else", "", posix);
    const PerforceClient plain =
        parsePerforceClient("# Root: no\n\nClient:\tws\r\n\nRoot:\t/home/my work/\r\nView:\n\tRoot: x\n", elsewhere, posix);
    EXPECT_EQ(plain.name, "ws");
    EXPECT_EQ(plain.root, "/home/my work");
    EXPECT_EQ(parsePerforceClient("Client: ws\nRoot: \"c:/my work\"\n", elsewhere, windows).root, R"(c:\my work)");
    EXPECT_TRUE(parsePerforceClient("Client: ws\nRoot: null\nAltRoots:\n\tC:\\a\n", elsewhere, windows).root.isEmpty());
    EXPECT_TRUE(parsePerforceClient("Access denied\n", elsewhere, posix).name.isNull());

    const auto rootFor = [](cmROStringT watched, cmPathStyle style) {
        return parsePerforceClient("Root: c:/a\n\nAltRoots:\n\t/b\n\n\t\"C:\\c d\\\"\n\nHost: c:/e\n",
                                   WatchedSpelling(watched, "", style), style)
            .root;
    };
    EXPECT_EQ(rootFor("/b/below", posix), "/b");
    EXPECT_EQ(rootFor("/bb", posix), "c:/a");
    EXPECT_EQ(rootFor("c:/C D/below", windows), R"(C:\c d)");
}

Files openedPaths(cmROStringT output, const PerforceClient& client, cmPathStyle style)
{
    Files paths;
    for (const PerforceOpenedFile& file : parsePerforceOpened(output, client, style))
        paths.push_back(file.path);
    return paths;
}

TEST(PerforceOutput, MapsOpenedFilesToTheRoot)
{
    const PerforceClient client{"ws", "/root"};
    EXPECT_EQ(openedPaths("... clientFile //ws/a b\n... rev 1\n\n... rev 2\n... clientFile //ws/s/%40x%23%25\n\n"
                          "... clientFile //ws2/no\n\n... clientFile //ws/\n\n...clientFile //ws/no\n... clientFile",
                          client, posix),
              (Files{"/root/a b", "/root/s/@x#%"}));
    EXPECT_EQ(openedPaths("... clientFile //ws/a/b\r\n\r\n", {"ws", R"(C:\r)"}, windows), (Files{R"(C:\r\a\b)"}));
    EXPECT_EQ(openedPaths("... clientFile //ws/C:/a\n", {"ws", ""}, windows), (Files{R"(C:\a)"}));
}

TEST(PerforceOutput, TakesWhatIsHereInAnOlderRevision)
{
    EXPECT_EQ(parsePerforceSync("//d/a#4 - updating /r/a\n//d/b#1 - added as /r/b\n//d/c#2 - deleted as /r/c - updating /x\n"
                                "//d/e#3 - is opened at a later revision - not changed\n//d/f - updating #/r/f\n"
                                "noise - updating /r/g\n//d/h#1 - updating relative\n"
                                "//d/%40i#9 - is opened and not being changed\n//d/j#9 - is opened and not being changed\n",
                                {{"//d/%40i", "/r/@i"}}, posix),
              (Files{"/r/a", "/r/c - updating /x", "/r/@i"}));
    EXPECT_EQ(parsePerforceDiff("/r/a b\n\n--- no\n/r/c\r\n", posix), (Files{"/r/a b", "/r/c"}));
}

}  // namespace
