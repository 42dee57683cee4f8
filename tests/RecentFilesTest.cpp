#include "filewatcher/recent/RecentDocuments.h"
#include "tests/ModuleFixture.h"

#include <algorithm>

namespace {

class RememberedDocuments : public RecentDocuments {
public:
    void setUp() override { ++setUps; }
    std::size_t add(const cmArray<cmStringT>& paths) override
    {
        added.assign(paths.begin(), paths.end());
        return paths.size();
    }
    int setUps = 0;
    std::vector<cmStringT> added;
};

TEST_F(ModuleTest, ReportsTheNewestTwentyOneRecentFiles)
{
    RememberedDocuments list;
    setRecentDocuments(&list);
    call("_RecentFilesProcessPending", {});
    EXPECT_EQ(list.setUps, 1) << "even without a file";
    for (const int count : {1, 20, 21, 22, 25}) {
        std::vector<cmStringT> files;
        for (int i = 0; i < count; ++i) {
            files.emplace_back(cmROStringT(std::to_string(i / 2)));  // every path twice
            call("_RecentFilesAdd", {files.back()});
        }
        files.erase(files.begin(), files.begin() + std::max(count - 21, 0));
        call("_RecentFilesProcessPending", {});
        EXPECT_EQ(std::exchange(list.added, {}), files);
        call("_RecentFilesProcessPending", {});
        EXPECT_TRUE(list.added.empty()) << "the pending files were dropped";
    }
    EXPECT_EQ(list.setUps, 1);
    setRecentDocuments(nullptr);
}

}  // namespace
