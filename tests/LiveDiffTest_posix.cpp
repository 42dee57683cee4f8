#include "common/cmFileReplacement.h"
#include "filewatcher/livediff/LiveDiffCachePath.h"
#include "filewatcher/livediff/LiveDiffFetch.h"
#include "tests/Captured.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/resource.h>
#include <unistd.h>

#include <csignal>

namespace {

TEST(LiveDiffFetch, KeepsTheOldCacheFileWhenTheDiskIsFull)
{
    const TempFolder folder;
    writeFile(folder / "f", "old");
    rlimit unlimited{};
    getrlimit(RLIMIT_FSIZE, &unlimited);
    const rlimit limit{50000, unlimited.rlim_max};
    const auto handler = std::signal(SIGXFSZ, SIG_IGN);
    setrlimit(RLIMIT_FSIZE, &limit);
    const std::int32_t status = fetchLiveDiffFile({"", helper("bytes 100000"), "f", cmROStringT(text(folder / "f")), ""}, {}, -7);
    setrlimit(RLIMIT_FSIZE, &unlimited);
    std::signal(SIGXFSZ, handler);
    EXPECT_EQ(status, -7);
    EXPECT_EQ(liveDiffStatus(text(folder / "f")), -7);
    EXPECT_EQ(readFile(folder / "f"), "old");
}

TEST(LiveDiffFetch, KeepsItsFileFromStreamsChildrenAndLaterProcesses)
{
    const TempFolder folder;
    const std::string living = ".new-" + std::to_string(getppid()) + "-1";
    for (const std::string& name : {living, std::string(".new-2147483647-1"), std::string(".new-4294967295-1")})
        writeFile(folder / name, "x");
    writeFile(folder / ".new-2147483647-2notes.md", "x");
    fs::create_directory(folder / ".new-2147483647-3");
    const cmFileReplacement ordinary(text(folder / "f"));
    const int input = dup(STDIN_FILENO);
    close(STDIN_FILENO);
    {
        cmFileReplacement file(text(folder / "f"));
        EXPECT_EQ(fcntl(STDIN_FILENO, F_GETFD), -1) << "the host's next read of its input would take our file";
        for (const fs::directory_entry& open : fs::directory_iterator("/proc/self/fd")) {
            std::error_code gone;
            const bool ours = fs::read_symlink(open, gone).parent_path() == folder.path();
            EXPECT_TRUE(!ours || fcntl(std::stoi(open.path().filename()), F_GETFD) == FD_CLOEXEC);
        }
    }
    dup2(input, STDIN_FILENO);
    close(input);
    EXPECT_TRUE(fs::remove(folder / living)) << "its process may go on writing it";
    EXPECT_EQ(std::distance(fs::directory_iterator(folder.path()), {}), 3) << "ours, and two that are not left over";
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
