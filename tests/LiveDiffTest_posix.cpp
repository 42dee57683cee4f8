#include "filewatcher/livediff/LiveDiffCachePath.h"
#include "filewatcher/livediff/LiveDiffFetch.h"
#include "tests/TestSupport.h"

#include <gtest/gtest.h>
#include <sys/resource.h>

#include <csignal>

namespace fs = std::filesystem;

namespace {

TEST(LiveDiffFetch, KeepsTheOldCacheFileWhenTheDiskIsFull)
{
    const TempFolder folder;
    writeFile(folder / "f", "old");
    const std::string command = '"' + builtProgram("testhelper") + "\" bytes 100000";
    rlimit unlimited{};
    getrlimit(RLIMIT_FSIZE, &unlimited);
    const rlimit limit{50000, unlimited.rlim_max};
    const auto handler = std::signal(SIGXFSZ, SIG_IGN);
    setrlimit(RLIMIT_FSIZE, &limit);
    const std::int32_t status = fetchLiveDiffFile({"", cmROStringT(command), "f", cmROStringT(text(folder / "f")), ""}, {}, -7);
    setrlimit(RLIMIT_FSIZE, &unlimited);
    std::signal(SIGXFSZ, handler);
    EXPECT_EQ(status, -7);
    EXPECT_EQ(liveDiffStatus(text(folder / "f")), -7);
    EXPECT_EQ(readFile(folder / "f"), "old");
}

TEST(LiveDiffCachePath, FollowsNoLinkInTheCache)
{
    const TempFolder folder;
    const fs::path file(prepareLiveDiffCacheFile(text(folder / "editor"), "/a/b/f").c_str());
    fs::create_directories(folder / "outside");
    fs::create_directories(folder / "editor/svclivediff/sibling");
    for (const char* target : {"outside", "editor/svclivediff/sibling"}) {
        fs::remove_all(file.parent_path());
        fs::create_directory_symlink(folder / target, file.parent_path());
        for (const char* path : {"/a/b/f", "/a/b/deep/f"})
            EXPECT_TRUE(prepareLiveDiffCacheFile(text(folder / "editor"), path).isNull()) << path << " in " << target;
        EXPECT_TRUE(fs::is_empty(folder / target));
    }
    fs::remove_all(folder / "editor/svclivediff");
    fs::create_directory_symlink(folder / "outside", folder / "editor/svclivediff");
    EXPECT_TRUE(prepareLiveDiffCacheFile(text(folder / "editor"), "/a/b/f").isNull());
    EXPECT_TRUE(fs::is_empty(folder / "outside"));
}

}  // namespace
