#include "common/cmPath.h"
#include "filewatcher/status/SVNStatusThread.h"
#include "tests/ModuleFixture.h"

#include <algorithm>
#include <atomic>
#include <sstream>

namespace {

/// A client that answers with the document that the test gives.
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

    static std::string document(const std::string& entries)
    {
        return "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<status><target path='wc'>" + entries + "</target>\n</status>\n";
    }
    std::string entry(const std::string& name, const std::string& item, const std::string& more = "") const
    {
        return "<entry path='" + in(name) + "'><wc-status props='none' item='" + item + "' revision='1'><commit revision='9'>"
               + "</commit></wc-status>" + more + "</entry>";
    }
    std::string revisions(const std::string& name, const std::string& own, const std::string& commit) const
    {
        return "<entry path='" + in(name) + "' revision='" + own + "'>" + commit + "</entry>";
    }
    void answer(const std::string& xml) { writeFile(folder / "svn.xml", xml); }
    void answerAndPass(const std::string& xml, std::int32_t status = 0)
    {
        answer(xml);
        EXPECT_EQ(pass(top(), svnType), status) << xml;
    }
    void markAsModified(const Texts& names)
    {
        TXVCRECORD record;
        record.localStatus = record.repositoryStatus = "mod";
        for (const std::string& name : names)
            txVCSetRecord(tamarin::TMString(in(name).c_str()), record);
    }
    /// The commands that were run; each has a blank at its end.
    Texts commands() const
    {
        Texts lines;
        std::istringstream log(readFile(folder / "svn.log"));
        for (std::string line; std::getline(log, line);)
            lines.push_back(line);
        return lines;
    }

    /// For each command whether it asked the server: "S" or "-".
    std::string asked() const
    {
        std::string questions;
        for (const std::string& command : commands())
            questions += command.find("--show-updates") == std::string::npos ? '-' : 'S';
        return questions;
    }

    TempFolder folder;
    bool warned = false;
};

const std::string outdated = "<repos-status item='modified' props='none'></repos-status>";
const std::string upToDate = "<repos-status item='normal' props='modified'></repos-status>";

TEST_F(SVNReplayTest, SetsAndClearsWhatTheEntriesTell)
{
    markAsModified({"normal", "added", "same", "gone", "left", "behind", "equal", "alone", "conflicted"});
    answerAndPass(document("<entry path='" + top() + "/a/b'><wc-status item='modified'/></entry>" + entry("normal", "normal")
                           + entry("added", "added") + entry("!DOCTYPE", "modified") + entry("conflicted", "conflicted")
                           + entry("newer", "normal", outdated) + entry("same", "added", upToDate) + "<entry path='" + in("gone")
                           + "'/>" + revisions("ahead", "9", "<commit revision='10'/>")
                           + revisions("behind", "10", "<commit revision='9'/>")
                           + revisions("equal", "9", "<commit revision='9'/>") + revisions("alone", "3", "<commit/>")));
    const std::map<std::string, std::string> expected{
        {"ahead", "/mod/1"},    {"behind", "//1"},           {"equal", "//1"},       {"alone", "/mod/1"},   {"a/b", "mod//1"},
        {"!DOCTYPE", "mod//1"}, {"newer", "/mod/1"},         {"added", "mod/mod/0"}, {"left", "mod/mod/0"}, {"gone", "/mod/1"},
        {"same", "mod//1"},     {"conflicted", "mod/mod/0"}, {"normal", "/mod/1"}};  // the server was not asked
    for (const auto& [name, wanted] : expected)
        EXPECT_EQ(record(in(name)), wanted) << name;
    answerAndPass(document(entry("newer", "normal", outdated)));
    EXPECT_EQ(notifications, 1);  // the second pass changed nothing
    answerAndPass(document(entry("newer", "normal") + "<against revision='9'/>"));
    EXPECT_EQ(record(in("newer")), "//1");  // the server answered: the file is up to date
    EXPECT_EQ(notifications, 2);
}

TEST_F(SVNReplayTest, AsksByTheFlagsOfThePath)
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
    EXPECT_EQ(commands(),
              (Texts{"status --non-interactive --xml --show-updates --verbose " + top() + " ",
                     "status --non-interactive --xml --verbose " + top() + " ",
                     "status --non-interactive --xml --verbose --non-recursive " + top() + " ",
                     "info --non-interactive --xml " + top() + " ", "info --non-interactive --xml " + in("a @ b") + "@ "}));
}

TEST_F(SVNReplayTest, WritesNothingOfABrokenAnswer)
{
    const std::string whole = document(entry("a", "modified"));
    const std::string entity = "<!DOCTYPE s [<!ENTITY e SYSTEM \"file:///etc/passwd\">]>\n<status><target>"
                               + entry("&e;", "modified") + "</target></status>";
    for (const std::string& broken : {whole.substr(0, whole.size() - 10), whole + "<again/>", std::string(), entity})
        answerAndPass(broken, -1);
    ASSERT_EQ(commands().size(), 5u) << "the first pass asks again without the server, the others did not ask it";
    EXPECT_EQ(commands()[1], "status --non-interactive --xml --verbose " + top() + " ");
    writeFile(folder / "svn.err", "svn: warning: W1: x\nsvn: E200009: it is wrong\n");
    answerAndPass(whole, -1);
    EXPECT_EQ(reason, "svn: E200009: it is wrong");
    fs::remove(folder / "svn.err");
    EXPECT_TRUE(editor.records().empty());
    // Paths that the watched directory cannot hold.
    answerAndPass(document("<entry><wc-status item='modified'/></entry><entry path='../a'><wc-status item='modified'/></entry>"));
    EXPECT_TRUE(editor.records().empty());
}

TEST_F(SVNReplayTest, ReadsALargeAnswerInPieces)
{
    const std::int32_t many = 1000;  // three pieces
    const auto entries = [this](const std::string& kind) {
        std::string text;
        for (std::int32_t number = 0; number < many; ++number)
            text += entry(kind + std::to_string(number), "modified", outdated);
        return text;
    };
    const std::string listed = "<changelist name='c'>" + entries("listed") + "</changelist></status>";
    const std::string target = "<status><target path='wc'>" + entries("file");
    answerAndPass(target + "</targe></status>", -1);
    EXPECT_TRUE(editor.records().empty()) << "what came before the fault";
    markAsModified({"plain"});
    answerAndPass(target + entry("plain", "normal") + "<against revision='9'/></target>" + listed);
    EXPECT_EQ(editor.records().size(), many + 1u);
    EXPECT_EQ(record(in("file0")) + record(in("file999")) + record(in("plain")), "mod/mod/1mod/mod/1//1");
}

/// The thread with a clock that the test sets. The server is silent about the directory "a" as long as `silence` exists.
class SVNServerTest : public SVNReplayTest {
protected:
    SVNServerTest()
    {
        answer(document(entry("f", "modified")));
        thread.setStatusConfig(cmROStringT(tool), 5000, -1);
        EXPECT_EQ(thread.start(), 0);
    }
    ~SVNServerTest() override { stop(); }

    void stop()
    {
        thread.requestStop();
        thread.join();
    }
    /// Why a pass lacks the server's answer.
    std::string passWithout(const std::string& path, std::int32_t status = 0)
    {
        reason.clear();
        thread.addPath(path, "", true, false);
        EXPECT_EQ(waitForPass(path), status) << path;
        return reason;
    }

    const std::string a = in("a"), b = in("b"), notAsked = "the server was not asked at once, as one had not answered",
                      in15 = "the server did not answer within 15 s", in120 = "the server did not answer within 120 s";
    const fs::path silence = folder / "wc/a.silent";
    std::atomic<std::uint32_t> now = 5000, clockReads = 0;
    cmMutex lock;
    SVNStatusThread thread{lock, [this] { return ++clockReads, now.load(); }};
};

TEST_F(SVNServerTest, AsksOnceAMinuteForEachDirectory)
{
    // Towards the end the clock wraps around.
    for (const std::uint32_t tick : {5000u, 5001u, 64999u, 65000u, 124999u, 125000u, 0xFFFFFFF0u, 10u, 60009u, 60010u}) {
        now = tick;
        EXPECT_EQ(passWithout(a) + passWithout(b), "");
    }
    EXPECT_EQ(asked(), "SS----SS--SSSSSS--SS");
    SVNQuestionPace pace;
    for (std::uint32_t tick = 0; tick < 1000000; tick += 1000) {
        const cmStringT directory(std::to_string(tick));
        ASSERT_EQ(pace.showUpdates(directory, tick), SVNShowUpdates::now);
        pace.noteAsked(directory, tick);
        tick % 100000 ? pace.noteAnswer(directory) : pace.noteRefusal(directory, "no");
    }
    EXPECT_EQ(pace.size(), 70u) << "those of the last minute, and those with a reason";
}

TEST_F(SVNServerTest, TellsWhyTheServerGaveNoAnswer)
{
    const std::string refusal = "svn: E170013: Unable to connect", foreign = "svn: warning: W155007: 'b' is not a working copy";
    writeFile(folder / "server.err", refusal);
    EXPECT_EQ(passWithout(a), refusal);
    EXPECT_EQ(passWithout(a), refusal);
    EXPECT_EQ(record(in("f")), "mod//1");
    fs::remove(folder / "server.err");
    now = 65000;
    EXPECT_EQ(passWithout(a), "");
    writeFile(folder / "server.err", foreign);
    answer(document(""));
    EXPECT_EQ(passWithout(b, -1), foreign);
    EXPECT_EQ(passWithout(b, -1), foreign) << "which was no question";
    EXPECT_EQ(asked(), "S--SSS");
}

TEST_F(SVNServerTest, PutsQuestionsToASilentServerBehindThePasses)
{
    writeFile(silence, "");
    thread.addPath(a, "", true, false);
    EXPECT_TRUE(eventually([&] { return asked() == "S"; }));
    now = 19999;
    EXPECT_TRUE(eventually([&, before = clockReads + 1] { return clockReads > before; }));
    EXPECT_TRUE(passesEnded.empty());
    now = 20000;
    EXPECT_EQ(waitForPass(a), 0);
    EXPECT_EQ(reason, in15);
    now = 79999;  // the last millisecond of the minute without questions
    EXPECT_EQ(passWithout(b), notAsked);
    EXPECT_EQ(passWithout(a), in15);
    now = 80000;
    EXPECT_EQ(passWithout(a), in15);
    EXPECT_TRUE(eventually([&] { return asked() == "S----S"; }));
    writeFile(b + ".silent", "");
    EXPECT_EQ(passWithout(b), notAsked);
    EXPECT_TRUE(eventually([&] { return asked() == "S----S-S"; })) << "beside the other question";
    EXPECT_EQ(record(in("f")), "mod//1");
    answer(document(entry("f", "normal", outdated)));
    fs::remove(b + ".silent");
    EXPECT_TRUE(eventually([&] { return record(in("f")) == "mod/mod/1"; })) << "its local status is not of now";
    EXPECT_EQ(passWithout(b), "");
    now = 140000;
    EXPECT_EQ(passWithout(a), in15) << "the last known state";
    EXPECT_EQ(passWithout(b), "") << "it has answered, so it is asked in its pass";
    EXPECT_EQ(asked(), "S----S-S--S");
    answer(document(entry("f", "normal", upToDate)));
    fs::remove(silence);
    EXPECT_TRUE(eventually([&] { return record(in("f")) == "//1"; }));

    writeFile(silence, "");
    EXPECT_EQ(passWithout(a), "");
    EXPECT_TRUE(eventually([&] { return asked() == "S----S-S--S-S"; }));
    now = 259999;
    EXPECT_TRUE(eventually([&, before = clockReads + 1] { return clockReads > before; }));
    EXPECT_EQ(processesOf(tool), 1u);
    now = 260000;
    EXPECT_TRUE(eventually([&] { return processesOf(tool) == 0; }));
    EXPECT_EQ(passWithout(a), in120);
    EXPECT_TRUE(eventually([&] { return asked() == "S----S-S--S-S-S"; }));
    EXPECT_EQ(passWithout(b), "") << "nobody was held up, so all are asked";
    EXPECT_EQ(asked(), "S----S-S--S-S-SS");
    stop();
    EXPECT_EQ(processesOf(tool), 0u);
}

TEST_F(SVNServerTest, ASilentServerHoldsUpThePassesOnce)
{
    const Texts others{in("c"), in("d"), in("e"), in("g")};
    const auto runs = [this](std::size_t count) { return eventually([&] { return processesOf(tool) == count; }); };
    for (const std::string& directory : others)
        writeFile(directory + ".silent", "");
    writeFile(silence, "");
    writeFile(b + ".silent", "");
    thread.addPath(a, "", true, false);
    EXPECT_TRUE(runs(1));
    now = 20000;
    EXPECT_EQ(waitForPass(a), 0);
    EXPECT_EQ(passWithout(b), notAsked);
    for (const std::string& directory : others)
        EXPECT_EQ(passWithout(directory), notAsked);
    now = 80000;
    for (const std::string& directory : others)
        EXPECT_EQ(passWithout(directory), notAsked);
    EXPECT_TRUE(runs(4));
    now = 95000;
    EXPECT_TRUE(runs(0)) << "a first question has 15 s";
    EXPECT_EQ(passWithout(others[0]), in15);
    thread.setSuspended(true);
    now = 155000;
    for (const std::string& directory : others)
        thread.addPath(directory, "", true, false);
    thread.addPath(b, "", false, false);
    thread.setSuspended(false);
    EXPECT_EQ(waitForPass(b), 0);
    EXPECT_EQ(reason, notAsked) << "nobody asks in a pass";
    const std::string question = "status --non-interactive --xml --show-updates --verbose --non-recursive " + b + " ";
    EXPECT_TRUE(runs(4) && eventually([&] { return std::ranges::count(commands(), question) == 1; })) << "it is the first";
    thread.setSuspended(true);
    EXPECT_TRUE(runs(0));
    thread.setSuspended(false);
    EXPECT_TRUE(runs(1)) << "the one that was not asked yet";
    passesEnded.clear();
    now = 215000;
    EXPECT_EQ(passWithout(b), notAsked);
    for (const std::string& directory : others)
        EXPECT_EQ(passWithout(directory), in15);
    EXPECT_TRUE(runs(4));
    writeFile(in("m") + ".silent", "");
    thread.addPath(in("m"), "", true, false);
    EXPECT_TRUE(runs(5));
    now = 230000;
    EXPECT_EQ(waitForPass(in("m")), 0);
    EXPECT_TRUE(runs(3) && eventually([&, before = clockReads + 50] { return clockReads > before; }));
    EXPECT_EQ(processesOf(tool), 3u) << "for a minute no question begins";
    thread.removePath(others[0]);
    EXPECT_TRUE(runs(2));
    thread.removeAllPaths();
    EXPECT_TRUE(runs(0));

    answer("<status><target>" + entry("f", "modified") + "</target></status>");
    writeFile(folder / "lively", "");
    writeFile(in("l") + ".silent", "");
    now = 400000;
    thread.addPath(in("l"), "", true, false);
    EXPECT_TRUE(runs(1));
    for (now = 410000; now < 450000; now += 10000)
        EXPECT_TRUE(eventually([&, before = clockReads + 50] { return clockReads > before; }));
    fs::remove(in("l") + ".silent");
    EXPECT_EQ(waitForPass(in("l")), 0);
    EXPECT_EQ(asked().back(), 'S') << "it needed no local command";
    thread.setStatusConfig(cmROStringT(tool), 5000, 10);
    EXPECT_EQ(passWithout(in("h"), -6657), "");
}

}  // namespace
