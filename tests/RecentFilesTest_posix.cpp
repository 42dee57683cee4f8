#include "filewatcher/recent/RecentDocuments.h"
#include "tests/TestSupport.h"

#include <glib.h>
#include <gtest/gtest.h>
#include <sys/stat.h>

#include <cstdlib>
#include <memory>

namespace {

TEST(RecentDocuments, JoinThoseOfTheDesktop)
{
    const TempFolder folder;
    setenv("XDG_DATA_HOME", (folder / "data").c_str(), 1);
    const cmStringT file = cmROStringT(text(folder / "a b.txt"));
    const cmStringT odd = cmROStringT(text(folder / "\xC3\xBC%20#.txt"));
    writeFile(folder / "a b.txt", "x");
    writeFile(folder / "\xC3\xBC%20#.txt", "x");
    RecentDocuments& documents = systemRecentDocuments();
    documents.setUp();
    EXPECT_EQ(documents.add({cmROStringT(text(folder / "missing")), "no/absolute path", "", file}), 1u);
    EXPECT_EQ(documents.add({odd, file}), 2u);

    const fs::path list = folder / "data" / "recently-used.xbel";
    EXPECT_EQ(fs::status(list).permissions(), fs::perms(0600));
    const std::unique_ptr<GBookmarkFile, decltype(&g_bookmark_file_free)> read(g_bookmark_file_new(), &g_bookmark_file_free);
    ASSERT_TRUE(g_bookmark_file_load_from_file(read.get(), list.c_str(), nullptr));
    EXPECT_EQ(g_bookmark_file_get_size(read.get()), 2);
    for (const cmStringT& path : {file, odd}) {
        const std::unique_ptr<char, decltype(&g_free)> uri(g_filename_to_uri(path.c_str(), nullptr, nullptr), &g_free);
        EXPECT_TRUE(g_bookmark_file_has_application(read.get(), uri.get(), "TamarinRecentFiles", nullptr)) << path.c_str();
    }

    writeFile(list, "<xbel");
    EXPECT_EQ(documents.add({file}), 0u);
    EXPECT_EQ(readFile(list), "<xbel") << "an unreadable list must not be overwritten";

    const fs::path target = folder / "elsewhere" / "list";
    fs::remove(list);
    fs::create_symlink("../elsewhere/list", list);
    EXPECT_EQ(documents.add({file}), 1u) << "a link that leads to no file yet";
    writeFile(target, "");
    EXPECT_EQ(documents.add({file}), 1u) << "an empty list";
    EXPECT_TRUE(fs::is_symlink(list) && readFile(target).find("a%20b.txt") != std::string::npos);
    fs::remove(target);
    ASSERT_EQ(mkfifo(target.c_str(), 0600), 0);
    EXPECT_EQ(documents.add({file}), 0u);
    EXPECT_TRUE(fs::is_fifo(target));
    fs::remove(target);
    fs::create_symlink(list, target);
    EXPECT_EQ(documents.add({file}), 0u) << "links in a circle";
    unsetenv("XDG_DATA_HOME");
}

}  // namespace
