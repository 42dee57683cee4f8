#include "tests/ModuleFixture.h"
#include "txapi/TMIterator.h"
#include "txapi/TMString.h"
#include "txapi/txapi.h"

#include <gtest/gtest.h>

#include <string>

namespace {

using tamarin::TMIterator;
using tamarin::TMString;

TEST(TMStringTest, IsAssignedAndJoinedFromEveryKindOfText)
{
    TMString text;
    EXPECT_TRUE(text.isNull());
    EXPECT_TRUE(text.isEmpty());
    text = "abc";
    text = TXLSTR{2, "xyz"};
    EXPECT_STREQ(text.getCString(), "xy");
    text = 'c';
    text += "m";
    text += 'S';
    text += cmStringT("t");
    text += cmROStringT("r");
    text += cmThinStringT("i");
    text += cmCat("n") + "g";
    text += TMString("!");
    EXPECT_EQ(text.getCMString(), "cmString!");
    const TMString sum =
        TMString("a") + 'b' + "c" + cmStringT("d") + cmROStringT("e") + cmThinStringT("f") + (cmCat("g") + "h") + text;
    EXPECT_EQ(sum.getCMString(), "abcdefghcmString!");
    text = static_cast<const char*>(nullptr);
    EXPECT_TRUE(text.isNull());
}

TEST(TMStringTest, AnswersOutsideItsBoundsWithNul)
{
    const TMString text("\xC3\xBC");
    EXPECT_EQ(text.getUCString()[0], 0xC3);
    EXPECT_EQ(text.first_char(), '\xC3');
    EXPECT_EQ(text.last_char(), '\xBC');
    EXPECT_EQ(text.charAt(2), '\0');
    EXPECT_EQ(text[-1], '\0');
    EXPECT_EQ(TMString("").last_char(), '\0');
    EXPECT_EQ(text.length(), 2);
    EXPECT_EQ(text.length32(), 2);
    EXPECT_TRUE(TMString("").isNotNull());
    EXPECT_TRUE(text.isNotEmpty());
}

TEST_F(ModuleTest, IteratorsWalkNestedContainersAndCopiesGoOnAlone)
{
    const TXHVAR table = txHvarAlloc();
    for (const char* key : {"a", "b"}) {
        const TXHVAR list = txHvarHashElement(table, key, txCreateMissing);
        for (std::int32_t i = 0; i < 2; ++i)
            txHvarSetInt(txHvarArrayElement(list, i, txCreateMissing), 10 * (key[0] - 'a') + i);
    }
    TMIterator outer;
    ASSERT_EQ(outer.pushStack(table), 0);
    std::vector<int> found;
    TMIterator copy;
    while (const TXHVAR list = txHvarNextElement(outer)) {
        outer.pushStack(list);
        copy = outer;
        while (const TXHVAR element = txHvarNextElement(outer))
            found.push_back(txHvarGetInt(element));
        EXPECT_EQ(outer.popStack(), 0);
    }
    EXPECT_EQ(found, (std::vector<int>{0, 1, 10, 11}));
    EXPECT_EQ(txHvarGetInt(txHvarNextElement(copy)), 10);
    copy.reset();
    EXPECT_EQ(txHvarNextElement(copy), txHvarHashElement(table, "a", 0));
    copy.clearStack();
    EXPECT_EQ(copy.popStack(), -1);
    EXPECT_EQ(copy.pushStack(0), -1);
    EXPECT_EQ(copy.top(), nullptr);
    txHvarFree(table);
}

}  // namespace
