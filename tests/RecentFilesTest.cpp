#include "filewatcher/recent/RecentFiles.h"
#include "tests/ModuleFixture.h"

#include <algorithm>

namespace {

/// A list that keeps what it was told.
class Remembered : public RecentDocuments {
public:
    void setUp() override { ++setUps; }
    std::size_t add(const cmArray<cmStringT>& paths) override
    {
        for (const cmStringT& path : paths)
            added.emplace_back(path.c_str());
        return paths.size();
    }

    int setUps = 0;
    std::vector<std::string> added;
};

class RecentFilesTest : public ModuleTest {
protected:
    RecentFilesTest() { setRecentDocuments(&list); }
    ~RecentFilesTest() override { setRecentDocuments(nullptr); }

    /// Adds files named 0, 1, 2... and has them reported.
    std::vector<std::string> reported(int count)
    {
        for (int i = 0; i < count; ++i)
            call("_RecentFilesAdd", {cmStringT(cmROStringT(std::to_string(i)))});
        list.added.clear();
        call("_RecentFilesProcessPending", {});
        return list.added;
    }

    Remembered list;
};

TEST_F(RecentFilesTest, ReportsTheNewestTwentyOne)
{
    EXPECT_TRUE(reported(0).empty());
    EXPECT_EQ(list.setUps, 1);
    for (const int count : {1, 20, 21, 22, 25}) {
        const std::vector<std::string> files = reported(count);
        EXPECT_EQ(files.size(), static_cast<std::size_t>(std::min(count, 21)));
        EXPECT_EQ(files.front(), std::to_string(std::max(count - 21, 0)));
        EXPECT_EQ(files.back(), std::to_string(count - 1));
    }
    EXPECT_TRUE(reported(0).empty());
    call("_RecentFilesAdd", {"0"});
    EXPECT_EQ(reported(1), (std::vector<std::string>{"0", "0"}));
    EXPECT_EQ(list.setUps, 1);
}

}  // namespace
