#include "tests/TestSupport.h"

#include <gtest/gtest.h>

namespace {

TEST(Txhost, FailsWhenItsOutputCannotBeWritten)
{
    const TempFolder folder;
    EXPECT_EQ(runInto(builtProgram("txhost"), "functions", "/dev/full", folder / "err"), 1);
}

}  // namespace
