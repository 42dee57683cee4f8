#include "filewatcher/status/GitPorcelain.h"

#include <gtest/gtest.h>

#include <string>

namespace {

/// The entries of an output, each as its two columns, a blank and the path.
std::vector<std::string> entries(cmROStringT output)
{
    std::vector<std::string> texts;
    for (const GitPorcelainEntry& entry : parseGitPorcelain(output))
        texts.push_back(std::string{entry.indexState, entry.workTreeState, ' '} + entry.path.c_str());
    return texts;
}

using Texts = std::vector<std::string>;

TEST(GitPorcelain, ReadsColumnsAndNames)
{
    EXPECT_EQ(entries(" M a.txt\nMM dir/b\n?? new\n M cut"), (Texts{" M a.txt", "MM dir/b", "?? new"}));
    EXPECT_EQ(entries("\n M\nfatal\n M \n M a\n"), (Texts{" M a"}));
    EXPECT_EQ(entries(R"( M "t\tq\"b\\n\n\303\274\177")"
                      "\n"),
              (Texts{" M t\tq\"b\\n\n\xC3\xBC\x7F"}));
    EXPECT_EQ(entries(R"( M "cut \)"
                      "\n"),
              (Texts{" M cut \\"}));
    EXPECT_EQ(entries(R"( M "cut\30)"
                      "\n"),
              (Texts{" M cut30"}));
}

TEST(GitPorcelain, TakesTheNewNameOfARename)
{
    EXPECT_EQ(entries("RM old -> new\nRM \"o -> l\" -> \"n -> w\"\nRM old -> \"n w\"\n M \"a -> b\"\n"),
              (Texts{"RM new", "RM n -> w", "RM n w", " M a -> b"}));
}

}  // namespace
