#include "editor/Editor.h"
#include "txapi/TMIterator.h"
#include "txapi/TMString.h"

#include <gtest/gtest.h>

#include <string>

namespace {

using tamarin::TMIterator;
using tamarin::TMString;

TEST(TMStringTest, IsMadeFromEveryKindOfText)
{
    TMString text;
    EXPECT_TRUE(text.isNull());
    text = TXLSTR{2, "xyz"};
    EXPECT_STREQ(text.getCString(), "xy");
    text = TXLSTR{-1, "xyz"};
    EXPECT_TRUE(text.isEmpty() && text.isNotNull());
    text = 'c';
    text += "m";
    text += 'S';
    text += cmStringT("t");
    text += cmROStringT("r");
    text += cmThinStringT("i");
    text += cmCat("n") + "g";
    text += TMString("!");
    EXPECT_EQ(text.getCMString(), "cmString!");
    text = static_cast<const char*>(nullptr);
    EXPECT_TRUE(text.isNull());
    text = "\xC3\xBC";
    EXPECT_EQ(text.getUCString()[0], 0xC3);
    EXPECT_EQ(text.first_char(), '\xC3');
    EXPECT_EQ(text.last_char(), '\xBC');
    EXPECT_EQ(text.charAt(2), '\0') << "outside its bounds";
    EXPECT_EQ(text[-1], '\0');
    EXPECT_EQ(TMString("").last_char(), '\0');
    EXPECT_EQ(text.length32(), 2);
}

TEST(TMIteratorTest, WalksNestedContainersWhileTheyGrow)
{
    const Editor editor;
    const TXHVAR table = txHvarAlloc();
    for (const char* key : {"b", "", "a"})
        txHvarSetString(txHvarArrayElement(txHvarHashElement(table, key, txCreateMissing), 1, txCreateMissing), key);
    TMIterator iterator;
    TMIterator copy;
    ASSERT_EQ(iterator.pushStack(table), 0);
    std::string seen;
    while (const TXHVAR inner = txHvarNextElement(iterator)) {
        iterator.pushStack(inner);
        copy.copyStack(iterator);
        for (cmStringT value; const TXHVAR element = txHvarNextElement(iterator);) {
            txHvarGetString(element, value);
            seen += value.c_str() + std::string(".");
        }
        EXPECT_EQ(iterator.popStack(), 0);
        txHvarHashElement(table, "aa", txCreateMissing);
        seen += iterator.top()->lastKey.c_str() + std::string("|");
    }
    EXPECT_EQ(seen, "..|.a.a|aa|.b.b|");
    const TXHVAR list = txHvarHashElement(table, "b", 0);
    EXPECT_EQ(txHvarNextElement(copy), txHvarArrayElement(list, 0, 0)) << "a copy has a position of its own";
    copy.reset();
    EXPECT_EQ(txHvarNextElement(copy), txHvarHashElement(table, "", 0));
    EXPECT_EQ(copy.pushStack(0), -1);
    txHvarSetInt(table, 0);
    EXPECT_EQ(txHvarNextElement(copy), 0);
    EXPECT_EQ(copy.popStack(), 0);
    EXPECT_EQ(copy.popStack(), -1);
}

}  // namespace
