#include "filewatcher/recent/RecentDocuments.h"
#include "tests/TestSupport.h"

#include <gtest/gtest.h>

namespace {

TEST(RecentDocuments, AreThoseThatTheShellCanName)
{
    const TempFolder folder;
    writeFile(folder / "a b.txt", "x");
    writeFile(folder / "\xC3\xBC%20#.txt", "x");
    RecentDocuments& documents = systemRecentDocuments();
    documents.setUp();
    EXPECT_EQ(documents.add({cmROStringT(text(folder / "missing")), "no/absolute path", cmROStringT(text(folder / "a b.txt")),
                             cmROStringT(text(folder / "\xC3\xBC%20#.txt"))}),
              2u);
}

}  // namespace
