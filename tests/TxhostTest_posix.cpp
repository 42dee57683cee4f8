#include "tests/TestSupport.h"
#include "tests/WatchProcess.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <csignal>

namespace {

TEST(Txhost, EndsItsWatchOnCtrlCAndFailsWhenItsOutputCannotBeWritten)
{
    const TempFolder folder;
    EXPECT_EQ(runInto(builtProgram("txhost"), "functions", "/dev/full", folder / "err"), 1);
    makeRepository(folder / "repo", {"a"});
    writeFile(folder / "repo" / "a", "22");
    WatchProcess watch({text(folder / "repo")});
    EXPECT_TRUE(watch.shows("modified"));
    kill(static_cast<pid_t>(watch.id()), SIGINT);
    EXPECT_TRUE(watch.ends());
    EXPECT_EQ(std::count(watch.output().begin(), watch.output().end(), '\n'), 1);
}

}  // namespace
