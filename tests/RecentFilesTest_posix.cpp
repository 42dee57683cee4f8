#include "filewatcher/recent/RecentDocuments.h"
#include "tests/TestSupport.h"

#include <glib.h>
#include <gtest/gtest.h>

#include <cstdlib>
#include <memory>

namespace {

std::string uriOf(const std::string& path)
{
    const std::unique_ptr<char, decltype(&g_free)> uri(g_filename_to_uri(path.c_str(), nullptr, nullptr), &g_free);
    return uri.get();
}

TEST(RecentDocuments, JoinThoseOfTheDesktop)
{
    const TempFolder folder;
    setenv("XDG_DATA_HOME", (folder / "data").c_str(), 1);
    const std::string file = text(folder / "a b.txt");
    const std::string odd = text(folder / "\xC3\xBC%20#.txt");
    writeFile(file, "x");
    writeFile(odd, "x");
    RecentDocuments& documents = systemRecentDocuments();
    documents.setUp();
    const std::string missing = text(folder / "missing");
    EXPECT_EQ(documents.add({cmROStringT(missing), "no/absolute path", "", cmROStringT(file)}), 1u);
    EXPECT_EQ(documents.add({cmROStringT(odd), cmROStringT(file)}), 2u);

    const std::filesystem::path list = folder / "data" / "recently-used.xbel";
    const std::unique_ptr<GBookmarkFile, decltype(&g_bookmark_file_free)> read(g_bookmark_file_new(), &g_bookmark_file_free);
    ASSERT_TRUE(g_bookmark_file_load_from_file(read.get(), list.c_str(), nullptr));
    EXPECT_EQ(g_bookmark_file_get_size(read.get()), 2);
    for (const std::string& path : {file, odd})
        EXPECT_TRUE(g_bookmark_file_has_application(read.get(), uriOf(path).c_str(), "TamarinRecentFiles", nullptr)) << path;

    writeFile(list, "<xbel");
    EXPECT_EQ(documents.add({cmROStringT(file)}), 0u);
    EXPECT_EQ(readFile(list), "<xbel") << "what cannot be read is left alone";
    unsetenv("XDG_DATA_HOME");
}

}  // namespace
