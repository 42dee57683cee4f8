#include "filewatcher/status/WatchedSpelling.h"

#include <gtest/gtest.h>

namespace {

TEST(WatchedSpelling, ReplacesWhatToolsCallTheWatchedDirectory)
{
    WatchedSpelling link("/link", "/real/ws/src", cmPathStyle::posix);
    link.addSpelling("/of root", "/real/ws");
    link.addSpelling("/below", "/real/ws/src/below");
    for (const char* file : {"/real/ws/src/below/a b", "/of root/src/below/a b", "/below/a b", "/link/below/a b"})
        EXPECT_EQ(link.respell(file), "/link/below/a b");
    EXPECT_EQ(link.respell("/real/ws/src"), "/link");
    for (const char* outside : {"/real/ws/src2", "/of root/b", "/LINK/a"})
        EXPECT_EQ(link.respell(outside), outside);
    EXPECT_EQ(WatchedSpelling("src", "/src", cmPathStyle::posix).respell("/src/a"), "/src/a");

    const WatchedSpelling junction("c:/Link", R"(D:\Real)", cmPathStyle::windows);
    for (const char* file : {R"(d:\REAL\Sub\a)", R"(C:\LINK\Sub\a)"})
        EXPECT_EQ(junction.respell(file), R"(c:\Link\Sub\a)");
    EXPECT_EQ(WatchedSpelling(R"(Z:\)", R"(\\server\share\)", cmPathStyle::windows).respell(R"(\\SERVER\Share\a)"), R"(Z:\a)");
}

}  // namespace
