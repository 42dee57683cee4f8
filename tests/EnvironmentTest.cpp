#include "common/Environment.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace {

TEST(Environment, SilencesTheHostsSettingsAndKeepsTheRest)
{
    const Environment host{"PATH=/bin",           "LC_ALL=de_DE.UTF-8", "LC_CTYPE=de_DE",
                           "GIT_DIR=/elsewhere",  "GIT_TRACE2_EVENT=1", "GIT_PAGER=less",
                           "GIT_AUTHOR_NAME=Ada", "GIT_DIFF_OPTS=-u9",  "GIT_REDIRECT_STDOUT=x"};
    const Environment quiet = quietEnvironment(host, {}, cmPathStyle::posix);
    EXPECT_EQ(quiet.front(), "PATH=/bin");
    EXPECT_EQ(environmentValue(quiet, "GIT_AUTHOR_NAME"), "Ada");
    EXPECT_EQ(environmentValue(quiet, "LC_CTYPE"), "C.UTF-8");
    EXPECT_EQ(environmentValue(quiet, "GIT_PAGER"), "cat");
    EXPECT_EQ(environmentValue(quiet, "GIT_OPTIONAL_LOCKS"), "0");
    for (const char* removed : {"LC_ALL", "GIT_DIR", "GIT_TRACE2_EVENT", "GIT_DIFF_OPTS", "GIT_REDIRECT_STDOUT"})
        EXPECT_TRUE(environmentValue(quiet, removed).isNull()) << removed;
}

TEST(Environment, AppendsItsGitConfigurationToTheHosts)
{
    const Environment host{"GIT_CONFIG_COUNT=1", "GIT_CONFIG_KEY_0=safe.directory", "GIT_CONFIG_VALUE_0=*",
                           "GIT_CONFIG_KEY_1=left.over"};
    const Environment quiet = quietEnvironment(host, {}, cmPathStyle::posix);
    EXPECT_EQ(environmentValue(quiet, "GIT_CONFIG_COUNT"), "17");
    EXPECT_EQ(environmentValue(quiet, "GIT_CONFIG_KEY_0"), "safe.directory");
    EXPECT_EQ(environmentValue(quiet, "GIT_CONFIG_KEY_1"), "core.quotePath");
    const Environment bad = quietEnvironment({"GIT_CONFIG_COUNT=many"}, {}, cmPathStyle::posix);
    EXPECT_EQ(environmentValue(bad, "GIT_CONFIG_COUNT"), "16");
    EXPECT_EQ(environmentValue(bad, "GIT_CONFIG_KEY_0"), "core.quotePath");
}

TEST(Environment, ComparesNamesWithoutCaseOnWindowsOnly)
{
    const Environment host{"Path=C:\\bin", "PATH=C:\\other", "git_dir=x", "=C:=C:\\work", "SYSTEMROOT=C:\\Windows"};
    const Environment quiet = quietEnvironment(host, {}, cmPathStyle::windows);
    EXPECT_EQ(environmentValue(quiet, "PATH", cmPathStyle::windows), "C:\\bin");
    EXPECT_TRUE(environmentValue(quiet, "GIT_DIR", cmPathStyle::windows).isNull());
    EXPECT_EQ(environmentValue(quiet, "=C:", cmPathStyle::windows), "C:\\work");
    EXPECT_EQ(environmentValue(quiet, "GIT_CONFIG_VALUE_15", cmPathStyle::windows), "C:\\Windows\\no-hooks");
    EXPECT_EQ(std::count_if(quiet.begin(), quiet.end(),
                            [](const cmStringT& v) { return cmEqualIgnoringCase(v.view().substr(0, 5), "path="); }),
              1);
    EXPECT_EQ(environmentValue(quietEnvironment(host, {}, cmPathStyle::posix), "git_dir"), "x");
}

TEST(Environment, IsSortedForWindowsAndReplacesVariables)
{
    EXPECT_EQ(windowsEnvironmentOrder({"b=2", "A_B=1", "ab=3", "=C:=C:\\x", "B=4", "C="}),
              (Environment{"=C:=C:\\x", "ab=3", "A_B=1", "b=2", "C="}));
    const Environment changed = withVariables({"A=1", "B=2", "A=3"}, {"A=4", "C=x=y"}, cmPathStyle::posix);
    EXPECT_EQ(changed, (Environment{"A=4", "B=2", "C=x=y"}));
}

}  // namespace
