#include "common/cmQueue.h"
#include "common/cmString.h"
#include "tests/TestSupport.h"

#include <gtest/gtest.h>

#include <atomic>
#include <thread>
#include <utility>

namespace {

TEST(String, TellsNullFromEmpty)
{
    EXPECT_TRUE(cmStringT().isNull());
    EXPECT_TRUE(cmStringT(static_cast<const char*>(nullptr)).isNull());
    EXPECT_FALSE(cmStringT("").isNull());
    EXPECT_STREQ(cmStringT().c_str(), "");
    cmStringT null;
    const cmStringT copy(null);
    EXPECT_TRUE(copy.isNull());
    EXPECT_EQ(copy, "");
    null += cmROStringT();
    EXPECT_FALSE(null.isNull());
}

TEST(String, HoldsAnyBytesAndItsOwnParts)
{
    cmStringT text(cmROStringT("a\0b", 3));
    EXPECT_EQ(text.length(), 3u);
    for (int i = 0; i < 12; ++i)
        text += text.view();
    EXPECT_EQ(text.length(), 3u << 12);
    EXPECT_EQ(text.view().substr(text.length() - 3), cmROStringT("a\0b", 3));
    text.append(text.view().substr(1, 2));
    EXPECT_EQ(text.view().substr(text.length() - 4), cmROStringT("\0b\0b", 4));
    text.assign(text.view().substr(2, 4));
    EXPECT_EQ(text, cmROStringT("ba\0b", 4));

    cmStringT moved(std::move(text));
    text = moved;
    EXPECT_EQ(text, moved);
    text.truncate(1);
    EXPECT_EQ(text, "b");
}

TEST(Queue, KeepsOrderAndHoldsOthersOutWhileItIsWalked)
{
    cmQueue<int> queue;
    for (int i = 0; i < 100; ++i)
        queue.push(i);
    std::thread writer;
    std::atomic<bool> pushed{false};
    int expected = 0;
    {
        const auto end = queue.end();
        auto item = queue.begin();
        writer = std::thread([&] {
            queue.push(100);
            pushed = true;
        });
        for (; !(item == end); ++item)
            EXPECT_EQ(*item, expected++);
        EXPECT_FALSE(eventually([&pushed] { return pushed.load(); }, std::chrono::milliseconds(50)));
    }
    writer.join();
    EXPECT_EQ(expected, 100);
    for (int i = 0, taken = -1; i <= 100; ++i) {
        ASSERT_TRUE(queue.pop(taken));
        EXPECT_EQ(taken, i);
    }
    EXPECT_TRUE(queue.isEmpty());
    EXPECT_FALSE(queue.pop(expected));
}

}  // namespace
