#include "common/cmPath.h"
#include "tests/ModuleFixture.h"

#include <algorithm>
#include <filesystem>
#include <sstream>

namespace fs = std::filesystem;

namespace {

/// A client that answers what a real one has written.
class SVNReplayTest : public ModuleTest {
protected:
    SVNReplayTest()
    {
        fs::create_directory(folder / "wc");
        setTool(helperAs(folder, "tool-svn"));
        editor.setDebugSink([this](cmROStringT line) { warned = warned || line.find("unclosed") != cmROStringT::npos; });
    }
    ~SVNReplayTest() override
    {
        EXPECT_EQ(editor.openDocuments(), 0u);
        EXPECT_FALSE(warned);
        editor.setDebugSink({});
    }

    std::string top() const { return text(folder / "wc"); }
    std::string in(const std::string& name) const { return text(folder / "wc" / cmSystemPath(name)); }

    static std::string document(const std::string& entries, const std::string& end = "")
    {
        return "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<status>\n<target\n   path=\"wc\">\n" + entries + end
               + "</target>\n</status>\n";
    }
    std::string entry(const std::string& name, const std::string& item, const std::string& more = "") const
    {
        return "<entry\n   path=\"" + in(name) + "\">\n<wc-status\n   props=\"none\"\n   item=\"" + item
               + "\"\n   revision=\"1\">\n<commit\n   revision=\"9\">\n<author>ada</author>\n</commit>\n</wc-status>\n" + more
               + "</entry>\n";
    }
    void answer(const std::string& xml) { writeFile(folder / "svn.xml", xml); }
    void answerAndPass(const std::string& xml)
    {
        answer(xml);
        addPath(top(), svnType);
        EXPECT_EQ(waitForPass(top()), 0);
    }
    TXVCRECORD record(const std::string& name) const { return editor.record(in(name)).value_or(TXVCRECORD()); }
    void setRecord(const std::string& name, const char* local, const char* repository)
    {
        TXVCRECORD record;
        record.localStatus = local;
        record.repositoryStatus = repository;
        txVCSetRecord(tamarin::TMString(in(name).c_str()), record);
    }
    /// The commands so far, each with a blank at its end.
    std::vector<std::string> commands() const
    {
        std::vector<std::string> lines;
        std::istringstream log(readFile(folder / "svn.log"));
        for (std::string line; std::getline(log, line);)
            lines.push_back(line);
        return lines;
    }

    TempFolder folder;
    bool warned = false;
};

const std::string outdated = "<repos-status\n   item=\"modified\"\n   props=\"none\">\n</repos-status>\n";
const std::string upToDate = "<repos-status\n   item=\"normal\"\n   props=\"modified\">\n</repos-status>\n";
const std::string against = "<against\n   revision=\"9\"/>\n";

TEST_F(SVNReplayTest, SetsAndClearsWhatTheEntriesTell)
{
    for (const char* name : {"normal", "added", "same", "gone", "left"})
        setRecord(name, "mod", "mod");
    answerAndPass(document(entry("modified", "modified") + entry("normal", "normal") + entry("added", "added")
                           + entry("newer", "normal", outdated) + entry("same", "added", upToDate)
                           + entry("odd", "modified", "<x/>") + "<entry path=\"" + in("gone") + "\"/>"));
    EXPECT_EQ(record("modified").localStatus, "mod");
    EXPECT_EQ(record("modified").tool, txVCToolSVN.number);
    EXPECT_EQ(record("normal").localStatus, "");
    EXPECT_EQ(record("normal").repositoryStatus, "mod");  // the server was not heard
    EXPECT_EQ(record("added").localStatus, "mod");
    EXPECT_EQ(record("added").tool, 0);
    EXPECT_EQ(record("newer").repositoryStatus, "mod");
    EXPECT_EQ(record("same").repositoryStatus, "");
    EXPECT_EQ(record("same").localStatus, "mod");
    EXPECT_EQ(record("gone").localStatus, "");
    EXPECT_EQ(record("gone").tool, txVCToolSVN.number);
    EXPECT_EQ(record("left").tool, 0);
    EXPECT_TRUE(editor.runUntil([&] { return notifications == 1; }, 5000));

    answerAndPass(document(entry("modified", "modified") + entry("newer", "normal", outdated)));
    EXPECT_FALSE(editor.runUntil([&] { return notifications > 1; }, 100));
    answerAndPass(document(entry("newer", "normal"), against));  // the server leaves out what is up to date
    EXPECT_EQ(record("newer").repositoryStatus, "");
    EXPECT_TRUE(editor.runUntil([&] { return notifications == 2; }, 5000));
}

TEST_F(SVNReplayTest, ComparesRevisionsWhereBothStandInTheEntry)
{
    const auto revisions = [this](const std::string& name, const std::string& own, const std::string& commit) {
        return "<entry path=\"" + in(name) + "\" revision=\"" + own + "\"><commit revision=\"" + commit + "\"/></entry>";
    };
    setRecord("older", "", "mod");
    setRecord("alone", "", "mod");
    answerAndPass(document(revisions("newer", "9", "10") + revisions("older", "10", "9") + "<entry path=\"" + in("alone")
                           + "\" revision=\"3\"/>"));
    EXPECT_EQ(record("newer").repositoryStatus, "mod");
    EXPECT_EQ(record("older").repositoryStatus, "");
    EXPECT_EQ(record("alone").repositoryStatus, "mod");
}

TEST_F(SVNReplayTest, TurnsSeparatorsOfThisPlatform)
{
    answerAndPass(document("<entry path=\"" + top() + "/a/b\"><wc-status item=\"modified\"/></entry>"));
    EXPECT_EQ(record("a/b").localStatus, "mod");
}

TEST_F(SVNReplayTest, AsksByTheFlagsOfThePathAndTheServerOnceAMinute)
{
    answer(document(""));
    const auto ask = [this](const std::string& path, std::int32_t flag, std::int32_t contextFlag) {
        editor.setProperty(txPropertyWatchContextFlag, contextFlag);
        call("filewatcherAddPath", {cmStringT(cmROStringT(path)), svnType, flag});
        EXPECT_TRUE(editor.runUntil([&] { return !passesEnded.empty(); }, 20000));
        passesEnded.clear();
    };
    ask(top() + cmPathSeparator(), 1, 0);
    ask(top(), 1, 0);
    ask(top(), 0, 0);
    ask(top(), 0, 1);
    ask(in("a @ b"), 1, 1);
    for (int round = 0; round < 10; ++round)
        ask(top(), 1, 0);
    const std::vector<std::string> asked = commands();
    ASSERT_EQ(asked.size(), 15u);
    EXPECT_EQ(asked[0], "status --non-interactive --xml --show-updates --verbose " + top() + " ");
    EXPECT_EQ(asked[1], "status --non-interactive --xml --verbose " + top() + " ");
    EXPECT_EQ(asked[2], "status --non-interactive --xml --verbose --non-recursive " + top() + " ");
    EXPECT_EQ(asked[3], "info --non-interactive --xml " + top() + " ");
    EXPECT_EQ(asked[4], "info --non-interactive --xml " + in("a @ b") + "@ ");
    EXPECT_EQ(std::count_if(asked.begin(), asked.end(),
                            [](const std::string& line) { return line.find("--show-updates") != std::string::npos; }),
              1);
}

TEST_F(SVNReplayTest, WritesNothingOfABrokenAnswer)
{
    const std::string whole = document(entry("a", "modified"));
    const std::string entity = "<!DOCTYPE s [<!ENTITY e SYSTEM \"file:///etc/passwd\">]>\n<status><target>"
                               + entry("&e;", "modified") + "</target></status>";
    for (const std::string& broken :
         {whole.substr(0, whole.size() - 10), whole + "<again/>", std::string(), std::string("svn: E155007"), entity,
          std::string("<status><target><entry path='x'></status>")}) {
        answer(broken);
        addPath(top(), svnType);
        EXPECT_EQ(waitForPass(top()), -1) << broken;
    }
    EXPECT_TRUE(editor.records().empty());
    // Paths that are none of what was asked for.
    answerAndPass("<status><target><entry path=''><wc-status item='modified'/></entry><entry><wc-status item='modified'/></entry>"
                  "<entry path='../a'><wc-status item='modified'/></entry></target></status>");
    EXPECT_TRUE(editor.records().empty());
}

TEST_F(SVNReplayTest, AsksAgainWithoutTheServerWhenThatOneFails)
{
    answer("<status><target>");
    addPath(top(), svnType);
    EXPECT_EQ(waitForPass(top()), -1);
    ASSERT_EQ(commands().size(), 2u);
    EXPECT_EQ(commands()[1], "status --non-interactive --xml --verbose " + top() + " ");
    addPath(top(), svnType);
    EXPECT_EQ(waitForPass(top()), -1);
    EXPECT_EQ(commands().size(), 3u);
}

TEST_F(SVNReplayTest, TakesAHugeAnswerUpToTheLimit)
{
    editor.setSetting(txVCMaxOutputSetting, 110 << 20);
    std::string padding = "<!--" + std::string(100 << 20, '.') + "-->";
    answerAndPass(document(padding + entry("a", "modified")));
    EXPECT_EQ(record("a").localStatus, "mod");
    padding.insert(4, std::string(12 << 20, '.'));
    answer(document(padding + entry("b", "modified")));
    addPath(top(), svnType);
    EXPECT_EQ(waitForPass(top()), -6657);
    EXPECT_FALSE(editor.record(in("b")));
}

}  // namespace
