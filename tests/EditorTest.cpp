#include "editor/Editor.h"
#include "editor/VCRecords.h"

#include <gtest/gtest.h>

#include <thread>
#include <utility>

namespace {

class EditorTest : public testing::Test {
protected:
    Editor editor;
    const TXHVAR variable = txHvarAlloc();
};

using EditorDeathTest = EditorTest;

TEST_F(EditorTest, ConvertsBetweenNumbersAndStrings)
{
    txHvarSetString(variable, "-12");
    EXPECT_EQ(txHvarGetInt(variable), -12);
    for (const char* noNumber : {"", "12a", " 12", "-"}) {
        txHvarSetString(variable, noNumber);
        EXPECT_EQ(txHvarGetInt(variable), 0) << noNumber;
    }
    txHvarSetInt64(variable, -5'000'000'000);
    cmStringT text;
    EXPECT_EQ(txHvarGetString(variable, text), 1);
    EXPECT_EQ(text, "-5000000000");
    EXPECT_EQ(txHvarGetInt(variable), INT32_MIN);
    std::int32_t flag = -1;
    EXPECT_EQ(txHvarGetFlag(variable, &flag), 0);
    EXPECT_EQ(flag, 1);
}

TEST_F(EditorTest, HandlesAreInvalidWhenTheirElementIsGone)
{
    const TXHVAR table = txHvarArrayElement(variable, 2, txCreateMissing);
    const TXHVAR deep = txHvarHashElement(table, "key", txCreateMissing);
    txHvarSetInt(deep, 7);
    EXPECT_EQ(txHvarArrayLength(variable), 3);
    EXPECT_EQ(txHvarArrayElement(variable, 2, 0), table);
    EXPECT_EQ(txHvarArrayElement(variable, 3, 0) + txHvarHashElement(table, "other", 0), 0);
    txHvarFree(table);
    EXPECT_EQ(txHvarGetInt(deep), 7) << "an element is not the caller's to free";
    txHvarSetString(variable, "no array any more");
    EXPECT_EQ(txHvarGetInt(deep), 0);
    std::int32_t flag = 5;
    EXPECT_LT(txHvarGetFlag(deep, &flag), 0);
    EXPECT_EQ(flag, 5);
    EXPECT_EQ(txHvarHashElement(table, "key", txCreateMissing), 0);
}

TEST(VCRecordsTest, AreSharedByWindowsPathsWhateverTheirCaseAndClearedByTool)
{
    VCRecords records(cmPathStyle::windows);
    records.write("C:\\Work\\a.c", {});
    TXVCRECORD record;
    record.state = 5;
    records.write("c:\\work\\A.c", record);
    EXPECT_EQ(records.find("C:\\WORK\\A.C").value_or(TXVCRECORD()).state, 5);
    ASSERT_EQ(records.all().size(), 1u);
    EXPECT_EQ(records.all().front().first, "c:\\work\\A.c");
    for (const auto& [path, tool] : {std::pair("b", 4), {"c", 8}}) {
        record.tool = tool;
        record.localStatus = path;
        records.write(path, record);
    }
    records.clear(4);
    records.clear(0);
    ASSERT_EQ(records.all().size(), 1u);
    EXPECT_EQ(records.all().front().first, "c");
    for (const auto& [status, changes] : {std::pair("mod", 1u), {"mod", 0u}, {"", 1u}}) {
        record.localStatus = status;
        records.write("C", record);
        EXPECT_EQ(records.takeChanged().size(), changes) << status;
    }
}

TEST_F(EditorTest, ReadsWellFormedXmlOnly)
{
    const std::int32_t document = txXMLLoadText("<?xml version=\"1.0\"?><!DOCTYPE s SYSTEM \"http://none/\"><!-- c -->"
                                                "<status><entry path=\"a&amp;b\"><wc item='modified'/></entry>"
                                                "<entry path=\"\"/></status>\n");
    ASSERT_GT(document, 0);
    cmArray<std::int32_t> nodes{9, 9, 9};
    ASSERT_EQ(txXMLSelect(document, "//entry", nodes), 2);
    cmStringT value;
    EXPECT_EQ(txXMLCFGGetAttributeCMString(document, nodes[0], "path", value), 1);
    EXPECT_EQ(value, "a&b");
    EXPECT_EQ(txXMLCFGGetAttributeCMString(document, nodes[1], "none", value), 0);
    EXPECT_EQ(value, "");
    EXPECT_NE(txXMLChild(document, nodes[0], "wc"), 0);
    for (const char* bad : {"//entry[", "count(//entry)", ""})
        EXPECT_LT(txXMLSelect(document, bad, nodes), 0) << bad;
    txXMLClose(document);
    EXPECT_LT(txXMLSelect(document, "//entry", nodes), 0);
    for (const char* bad : {"", "svn: E155007", "<a><b></b>", "<a><b></a>", "<a b='", "<a/><b/>", "<a/>rest", "<!-- only -->"})
        EXPECT_LT(txXMLLoadText(bad), 0) << bad;
    EXPECT_EQ(editor.openDocuments(), 0u);
}

TEST_F(EditorDeathTest, AServiceOffTheEditorsThreadEndsTheProgram)
{
    EXPECT_DEATH(std::thread([] { txHvarSetInt(1, 2); }).join(), "txHvarSetInt called off the editor's thread");
}

}  // namespace
