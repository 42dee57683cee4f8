#include "editor/Editor.h"
#include "editor/VCRecords.h"

#include <gtest/gtest.h>

#include <string>
#include <thread>
#include <vector>

namespace {

class EditorTest : public testing::Test {
protected:
    static cmStringT text(TXHVAR variable)
    {
        cmStringT value = "unset";
        txHvarGetString(variable, value);
        return value;
    }

    static cmStringT absolute(const char* path, const char* directory)
    {
        tamarin::TMString result;
        txAbsolute(path, directory, 1, result);
        return result.getCMString();
    }

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
    EXPECT_EQ(text(variable), "-5000000000");
    EXPECT_EQ(txHvarGetInt(variable), INT32_MIN);
    std::int32_t flag = -1;
    EXPECT_EQ(txHvarGetFlag(variable, &flag), 0);
    EXPECT_EQ(flag, 1);
    EXPECT_EQ(text(txHvarArrayElement(variable, 0, txCreateMissing)), "");
    EXPECT_EQ(text(variable), "");
}

TEST_F(EditorTest, HandlesLiveAsLongAsTheirElements)
{
    const TXHVAR table = txHvarArrayElement(variable, 2, txCreateMissing);
    const TXHVAR deep = txHvarHashElement(table, "key", txCreateMissing);
    txHvarSetInt(deep, 7);
    EXPECT_EQ(txHvarArrayLength(variable), 3);
    EXPECT_EQ(txHvarArrayElement(variable, 2, 0), table);
    EXPECT_EQ(txHvarHashElement(table, "key", 0), deep);
    EXPECT_EQ(txHvarHashElement(table, "other", 0), 0);
    EXPECT_EQ(txHvarArrayElement(variable, 3, 0), 0);

    txHvarFree(table);  // an element is not the caller's to free
    EXPECT_EQ(txHvarGetInt(deep), 7);
    txHvarSetString(variable, "no array any more");
    EXPECT_EQ(txHvarGetInt(deep), 0);
    std::int32_t flag = 5;
    EXPECT_LT(txHvarGetFlag(deep, &flag), 0);
    EXPECT_EQ(flag, 5);
    txHvarSetInt(deep, 8);
    EXPECT_EQ(text(deep), "unset");
    EXPECT_EQ(txHvarHashElement(table, "key", txCreateMissing), 0);
}

TEST_F(EditorTest, IteratesOverNestedContainersWhileTheyGrow)
{
    for (const char* key : {"b", "", "a"})
        txHvarSetString(txHvarArrayElement(txHvarHashElement(variable, key, txCreateMissing), 1, txCreateMissing), key);
    tamarin::TMIterator iterator;
    iterator.pushStack(variable);
    std::string seen;
    while (const TXHVAR inner = txHvarNextElement(iterator)) {
        iterator.pushStack(inner);
        while (const TXHVAR element = txHvarNextElement(iterator))
            seen += text(element).c_str() + std::string(".");
        iterator.popStack();
        txHvarHashElement(variable, "aa", txCreateMissing);
        seen += iterator.top()->lastKey.c_str() + std::string("|");
    }
    EXPECT_EQ(seen, "..|.a.a|aa|.b.b|");
    EXPECT_EQ(iterator.top()->next, 4);

    txHvarSetInt(variable, 0);
    iterator.reset();
    EXPECT_EQ(txHvarNextElement(iterator), 0);
}

TEST_F(EditorTest, MakesInstancesOfDefinedClasses)
{
    editor.defineClass("Info", {"name", "count"});
    EXPECT_LT(txHvarInitInstance(variable, "Other"), 0);
    ASSERT_EQ(txHvarInitInstance(variable, "Info"), 0);
    const TXHVAR count = txHvarField(variable, "count");
    txHvarSetInt(count, 3);
    EXPECT_EQ(txHvarField(variable, "missing"), 0);
    ASSERT_EQ(txHvarInitInstance(variable, "Info"), 0);
    EXPECT_EQ(text(txHvarField(variable, "count")), "");
    EXPECT_EQ(text(count), "unset");
}

TEST_F(EditorTest, NamesKeepTheirIndices)
{
    editor.setSetting("def_watch", 5);
    const std::int32_t index = txFindName("def_watch", txKindVariable);
    EXPECT_EQ(txFindName("def_watch", txKindFunction), 0);
    txHvarSetInt(txVariable(index), 6);
    EXPECT_EQ(editor.setting("def_watch"), 6);
    editor.removeSetting("def_watch");
    EXPECT_EQ(txVariable(index), 0);
    EXPECT_EQ(txFindName("def_watch", txKindVariable), 0);
    EXPECT_FALSE(editor.setting("def_watch"));

    editor.defineMacro("_git_exe", [] { return cmStringT("/usr/bin/git"); });
    const std::int32_t macro = txFindName("_git_exe", txKindFunction);
    EXPECT_NE(macro, index);
    EXPECT_TRUE(txIsCallable(macro));
    EXPECT_FALSE(txIsCallable(index));
    EXPECT_EQ(txCallFunction(0, macro, 0, nullptr), 0);
    EXPECT_EQ(text(txLastResult), "/usr/bin/git");
    EXPECT_LT(txCallFunction(0, index, 0, nullptr), 0);
}

TEST_F(EditorTest, PropertiesHaveBothForms)
{
    EXPECT_EQ(txProperty(12), 0);
    txSetStringProperty(12, "34");
    EXPECT_EQ(txGetIntProperty(12), 34);
    EXPECT_EQ(text(txProperty(12)), "34");
    editor.removeProperty(12);
    cmStringT value = "old";
    txGetStringProperty(12, value);
    EXPECT_EQ(value, "");
}

TEST_F(EditorTest, RecordsAndNotificationsComeFromAnyThread)
{
    constexpr int threads = 4;
    constexpr int each = 200;
    std::vector<std::vector<std::int32_t>> statuses(threads);
    int changes = 0;
    const auto home = std::this_thread::get_id();
    EditorObserver observer;
    observer.statusChanged = [&] { changes += home == std::this_thread::get_id(); };
    observer.passEnded = [&](const cmStringT& path, std::int32_t status) {
        statuses[static_cast<std::size_t>(path[1] - '0')].push_back(status);
    };
    editor.setObserver(observer);
    std::vector<std::jthread> writers;
    for (int i = 0; i < threads; ++i)
        writers.emplace_back([i] {
            const std::string directory = "/" + std::to_string(i);
            for (int n = 0; n < each; ++n) {
                TXVCRECORD record;
                record.state = n;
                record.tool = i == 0 ? 0 : 1 << i;
                txVCSetRecord((directory + "/" + std::to_string(n)).c_str(), record);
                txVCPassEnd(directory.c_str(), n);
                txVCStatusChanged();
            }
        });
    ASSERT_TRUE(editor.runUntil([&] { return changes == threads * each; }, 30000));
    std::vector<std::int32_t> ascending(each);
    for (int n = 0; n < each; ++n)
        ascending[static_cast<std::size_t>(n)] = n;
    for (const auto& one : statuses)
        EXPECT_EQ(one, ascending);

    EXPECT_EQ(editor.record("/3/199")->state, 199);
    editor.clearRecords(4);
    const auto left = editor.records();
    ASSERT_EQ(left.size(), 2u * each);
    EXPECT_EQ(left.front().first, "/1/0");
    EXPECT_EQ(left.back().first, "/3/99");
    TXVCRECORD untouched;
    untouched.state = 99;
    EXPECT_EQ(txVCGetRecord("/2/0", untouched), 0);
    EXPECT_EQ(untouched.state, 99);
}

TEST(VCRecordsTest, WindowsPathsShareARecordWhateverTheirCase)
{
    VCRecords records(cmPathStyle::windows);
    records.write("C:\\Work\\a.c", {});
    records.write("c:\\work\\A.c", {});
    EXPECT_TRUE(records.find("C:\\WORK\\A.C"));
    ASSERT_EQ(records.all().size(), 1u);
    EXPECT_EQ(records.all().front().first, "c:\\work\\A.c");
}

TEST_F(EditorTest, ReadsXml)
{
    const std::int32_t document = txXMLLoadText("<?xml version=\"1.0\"?><!DOCTYPE s SYSTEM \"http://none/\"><!-- c -->"
                                                "<status><entry path=\"a&amp;b\"><wc item='modified'/></entry>"
                                                "<entry path=\"\"/></status>\n");
    ASSERT_GT(document, 0);
    cmArray<std::int32_t> nodes{9, 9, 9};
    ASSERT_EQ(txXMLSelect(document, "//entry", nodes), 2);
    ASSERT_EQ(nodes.size(), 2u);
    cmStringT value;
    EXPECT_EQ(txXMLCFGGetAttributeCMString(document, nodes[0], "path", value), 1);
    EXPECT_EQ(value, "a&b");
    EXPECT_EQ(txXMLCFGGetAttributeCMString(document, txXMLChild(document, nodes[0], "wc"), "item", value), 1);
    EXPECT_EQ(value, "modified");
    EXPECT_EQ(txXMLCFGGetAttributeCMString(document, nodes[1], "none", value), 0);
    EXPECT_EQ(value, "");
    EXPECT_EQ(txXMLChild(document, nodes[1], "wc"), 0);
    EXPECT_EQ(txXMLChild(document, txXMLRoot(document), "entry"), nodes[0]);

    for (const char* bad : {"//entry[", "count(//entry)", ""})
        EXPECT_LT(txXMLSelect(document, bad, nodes), 0) << bad;
    txXMLClose(document);
    EXPECT_EQ(editor.openDocuments(), 0u);
    EXPECT_LT(txXMLSelect(document, "//entry", nodes), 0);
    EXPECT_EQ(txXMLRoot(document), 0);
    EXPECT_EQ(txXMLCFGGetAttributeCMString(document, 1, "path", value), 0);
}

TEST_F(EditorTest, RefusesXmlThatIsNotOneWholeElement)
{
    for (const char* bad : {"", "svn: E155007", "<a><b></b>", "<a><b></a>", "<a b='", "<a/><b/>", "<a/>rest", "<!-- only -->"})
        EXPECT_LT(txXMLLoadText(bad), 0) << bad;
    EXPECT_EQ(editor.openDocuments(), 0u);
}

struct TimerState {
    Editor* editor = nullptr;
    int ticks = 0;
    int others = 0;
    bool nested = false;
    std::int32_t first = -1;
    std::int32_t second = -1;
};
TimerState timers;

TEST_F(EditorTest, ATimerMayKillTimersInItsRoutine)
{
    timers = {};
    timers.editor = &editor;
    // Whichever comes first kills both; the loop inside it would run them if they were still there.
    const auto routine = [] {
        ++timers.ticks;
        txKillTimer(timers.first);
        txKillTimer(timers.second);
        timers.editor->post([] { timers.nested = true; });
        timers.editor->runUntil([] { return timers.nested; }, 30000);
    };
    timers.first = txSetTimer(1, routine);
    timers.second = txSetTimer(1, routine);
    EXPECT_GE(timers.first, 0);
    EXPECT_NE(timers.first, timers.second);
    txSetTimer(2, [] { ++timers.others; });
    EXPECT_TRUE(editor.runUntil([] { return timers.others >= 3; }, 30000));
    EXPECT_EQ(timers.ticks, 1);
    EXPECT_TRUE(timers.nested);
}

TEST_F(EditorTest, TheLoopStopsInTimeThoughTasksPostTasks)
{
    int runs = 0;
    std::function<void()> again = [&] {
        ++runs;
        editor.post(again);
    };
    editor.post(again);
    EXPECT_FALSE(editor.runUntil([] { return false; }, 0));
    EXPECT_EQ(runs, 1);
    EXPECT_TRUE(editor.runUntil([&] { return runs == 10; }, -1));
}

TEST_F(EditorTest, TheTreeKeepsItsOwnCopyOfUserData)
{
    const std::size_t before = editor.openVariables();
    txHvarSetInt(txHvarHashElement(variable, "id", txCreateMissing), 4);
    const std::int32_t last = txTreeAdd(0, "last", 1, variable);
    const std::int32_t first = txTreeAdd(0, "first", 2, 0);
    const std::int32_t middle = txTreeAdd(first, "middle", 3, 0);
    EXPECT_EQ(txTreeAdd(last + 100, "nowhere", 0, 0), 0);
    txHvarSetString(variable, "gone");
    txTreeSetDate(last, 2, {2024, 1, 2, 3, 4, 5});
    ASSERT_EQ(txTreeRowCount(), 3);
    EXPECT_EQ(editor.tree()[1].caption, "middle");
    EXPECT_GT(middle, 0);
    const TreeRow& row = editor.tree()[2];
    EXPECT_EQ(row.dateColumn, 2);
    EXPECT_EQ(row.date.year, 2024);
    EXPECT_EQ(txHvarGetInt(txHvarHashElement(row.userData, "id", 0)), 4);
    txTreeClear();
    EXPECT_EQ(txTreeRowCount(), 0);
    EXPECT_EQ(editor.openVariables(), before);
}

TEST_F(EditorTest, PathsAreToldApartAndMadeAbsolute)
{
    EXPECT_EQ(txPathKind("src/a.c"), txPathRelative);
    EXPECT_EQ(txPathKind("ftp://host/a.c"), txPathRemote);
    EXPECT_EQ(txFileSupportsGetFileTime("ftp://host/a.c"), 0);
    EXPECT_EQ(txFileSupportsGetFileTime("src/a.c"), 1);
    tamarin::TMString here;
    txAbsolute("", "", 0, here);
    EXPECT_EQ(txPathKind(here), txPathLocal);
    EXPECT_EQ(absolute("x/../\xC3\xA4.c", here.getCString()), cmJoinPath(here.getCMString(), "\xC3\xA4.c"));
    EXPECT_EQ(absolute("x/..", here.getCString()), here.getCMString());
}

TEST_F(EditorDeathTest, AServiceOffTheEditorsThreadEndsTheProgram)
{
    EXPECT_DEATH(std::thread([] { txHvarSetInt(1, 2); }).join(), "txHvarSetInt called off the editor's thread");
}

TEST(WithoutEditor, ServicesAnswerNothing)
{
    TXVCRECORD record;
    EXPECT_EQ(txHvarAlloc(), 0);
    EXPECT_EQ(txVCGetRecord("/a", record), 0);
    txVCStatusChanged();
    Editor editor;
    EXPECT_NE(txHvarAlloc(), 0);
}

}  // namespace
