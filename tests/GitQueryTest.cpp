#include "common/cmPath.h"
#include "filewatcher/git/GitCommand.h"
#include "tests/GitStatusFixture.h"

#include <filesystem>

namespace fs = std::filesystem;

namespace {

using Texts = std::vector<std::string>;

class GitQueryTest : public GitStatusTest {
protected:
    GitQueryTest()
    {
        editor.defineClass("SVCHistoryInfo",
                           {"revision", "author", "date", "comment", "affectedFilesDetails", "picIndex", "lsibIndex", "rsibIndex",
                            "firstChildIndex", "parentIndex", "expandable", "hidden", "revisionCaption", "curVersionFilename"});
        editor.setDebugSink([this](cmROStringT line) {
            if (const std::size_t at = line.find("status=0 "); at != cmROStringT::npos)
                lastCommand = line.substr(at + 9);
        });
    }
    ~GitQueryTest() override { editor.setDebugSink(nullptr); }

    std::int32_t history(const std::string& name, const char* revision = "", int newest = 0, int follow = 0, int working = 0)
    {
        return call("_GitGetHistoryInfo",
                    {cmStringT(in(name)), "git", CallArgument::variable(result), revision, newest, follow, working});
    }
    std::int32_t diff(const char* revision, const fs::path& directory)
    {
        return call("_GitGetDiffInfo", {cmStringT(text(directory)), "git", CallArgument::variable(result), revision});
    }
    std::int32_t diff(const char* revision) { return diff(revision, top); }
    std::int32_t show(const char* revision)
    {
        return call("_GitGetCommitInfo", {"git", cmStringT(text(top)), revision, CallArgument::variable(result)});
    }
    /// git's output without its line end.
    std::string gitLine(const std::vector<std::string>& arguments) const
    {
        const std::string output = git(top, arguments);
        return output.substr(0, output.find('\n'));
    }
    static std::string textOf(TXHVAR variable)
    {
        cmStringT value("missing");
        txHvarGetString(variable, value);
        return value.c_str();
    }
    static Texts textsOf(TXHVAR array)
    {
        Texts texts;
        for (std::int32_t i = 0; i < txHvarArrayLength(array); ++i)
            texts.push_back(textOf(txHvarArrayElement(array, i, 0)));
        return texts;
    }
    std::string field(std::int32_t entry, const char* name)
    {
        return textOf(txHvarField(txHvarArrayElement(result, entry, 0), name));
    }
    /// That field of every entry except the root.
    Texts fields(const char* name)
    {
        Texts texts;
        for (std::int32_t i = 1; i < txHvarArrayLength(result); ++i)
            texts.push_back(field(i, name));
        return texts;
    }
    TXHVAR at(TXHVAR table, const std::string& key) { return txHvarHashElement(table, key.c_str(), 0); }

    const TXHVAR result = txHvarAlloc();
    std::string lastCommand;
};

TEST_F(GitQueryTest, BuildsTheHistoryTreeOfAFile)
{
    commit({"sub/old"});
    git(top, {"mv", "sub/old", "sub/new"});
    git(top, {"commit", "--quiet", "--message", "rename\n\nwhy"});
    commit({"other"});
    ASSERT_EQ(history("sub/new", "", 0, 1, 1), 0);
    const char* format =
        R"(log --date=iso --date-order --name-only --follow  "--pretty=format:%H%x00%P%x00%ct%x00%ae%x00%an%x00%s%x00%B%x01" new)";
    EXPECT_EQ(lastCommand, std::string("\"git\" --no-pager ") + format);
    EXPECT_EQ(fields("comment"), (Texts{"Not yet committed", "rename\n\nwhy\n", "files\n"}));
    EXPECT_EQ(fields("affectedFilesDetails"), (Texts{"(null)", "sub/new", "sub/old"}));
    EXPECT_EQ(fields("curVersionFilename"), (Texts{"sub/new", "sub/new", "sub/old"}));
    EXPECT_EQ(fields("parentIndex"), (Texts{"0", "0", "0"}));
    EXPECT_EQ(fields("lsibIndex"), (Texts{"-1", "1", "2"}));
    EXPECT_EQ(fields("rsibIndex"), (Texts{"2", "3", "-1"}));
    EXPECT_EQ(field(0, "revision") + field(0, "firstChildIndex") + field(0, "parentIndex"), "root1-1");
    EXPECT_EQ(field(1, "revision") + field(1, "author"), "Working file(null)");
    const std::string hash = field(2, "revision");
    EXPECT_EQ(hash, gitLine({"rev-parse", "HEAD~1"}));
    EXPECT_EQ(field(2, "revisionCaption"), hash.substr(0, 7));
    EXPECT_EQ(field(2, "author") + field(2, "picIndex"), "Ada" + std::to_string(txFindPicture("_f_doc.svg")));
    EXPECT_EQ(field(2, "date"), gitLine({"log", "-1", "--format=%cd", "--date=format-local:%Y-%m-%d %H:%M:%S", hash}));

    ASSERT_EQ(history("sub/new", "HEAD~1", 1), 0);
    EXPECT_NE(lastCommand.find("--max-count=1  \"--pretty"), std::string::npos);
    EXPECT_NE(lastCommand.find("%x01\" HEAD~1 -- new"), std::string::npos);
    EXPECT_EQ(fields("revision"), Texts{hash});
    writeFile(top / "untracked", "x");
    EXPECT_EQ(history("untracked", "", 0, 0, 1), 0);
    EXPECT_EQ(txHvarArrayLength(result), 1);
    EXPECT_EQ(field(0, "firstChildIndex"), "-1");
    if (cmNativePathStyle == cmPathStyle::windows)
        return;  // no symbolic links under Wine
    fs::create_directory_symlink(top, folder / "link");
    ASSERT_EQ(history(text(folder / "link/sub/new"), "", 0, 0, 1), 0);
    EXPECT_EQ(field(1, "curVersionFilename"), "sub/new");
}

TEST_F(GitQueryTest, TakesEveryFileNameForAFile)
{
    std::vector<std::string> names = oddFileNames();
    names.insert(names.end(), {"main", "HEAD", "^main", "main..HEAD", "gone"});
    commit(names);
    for (const char* name : {"gone", "^main", "main..HEAD"})
        fs::remove(top / name);
    for (const std::string& name : names) {
        EXPECT_EQ(history(name), 0) << name;
        EXPECT_EQ(fields("affectedFilesDetails"), Texts{name}) << name;
    }
    EXPECT_FALSE(fs::exists(top / "ran"));
}

TEST_F(GitQueryTest, FailsWithoutTouchingTheVariable)
{
    commit({"a"});
    txHvarSetString(result, "as it was");
    for (const char* revision : {"nonsense", "--output=ran", "HEAD>ran"}) {
        EXPECT_EQ(history("a", revision), -1) << revision;
        EXPECT_EQ(diff(revision), -1) << revision;
        EXPECT_EQ(show(revision), -1) << revision;
    }
    EXPECT_EQ(history("../outside"), -1);
    EXPECT_EQ(diff("HEAD"), -1) << "nothing differs";
    EXPECT_EQ(diff("", folder.path()), -1) << "no repository";
    EXPECT_EQ(show("HEAD"), 0) << "no model";
    writeFile(top / ".git" / "index", std::string(100, 'x'));
    EXPECT_EQ(diff(""), -1);
    editor.setFeatureAvailable(false);
    EXPECT_EQ(show("HEAD"), -2173);
    EXPECT_EQ(diff(""), -2173);
    EXPECT_EQ(textOf(result), "as it was");
    EXPECT_FALSE(fs::exists(top / "ran"));
}

TEST_F(GitQueryTest, TreatsAnErrorAsFatalOnlyWithoutOutput)
{
    commit({"a"});
    git(top, {"branch", "side"});
    cmStringT output("old");
    EXPECT_EQ(runGitQuery("\"git\" branch -d side missing", text(top), output), 0);
    EXPECT_TRUE(output.view().starts_with("Deleted branch side"));
    EXPECT_EQ(runGitQuery("\"git\" branch -d missing", text(top), output), -1);
    EXPECT_EQ(output, "");
    EXPECT_EQ(runGitQuery(cmROStringT(text(folder / "missing")), text(top), output), -102646);
    CaptureControl control;
    control.stopRequested = [] { return true; };
    EXPECT_EQ(runGitCommand("\"git\" version", text(top), control, [](cmROStringT) {}), -102621);
}

TEST_F(GitQueryTest, ListsWhatIsChangedAndWhatIsStaged)
{
    commit({"a b", "sub/c", "d"});
    modify("sub/c");
    modify("d");
    git(top, {"add", "d"});
    modify("a b");
    for (const Texts& local : {Texts{"a b", "sub/c"}, Texts{}}) {
        ASSERT_EQ(diff(""), 0);
        EXPECT_EQ(lastCommand, "\"git\" --no-pager diff   --name-only --cached");
        EXPECT_EQ(textsOf(at(at(result, text(top)), "local")), local);
        EXPECT_EQ(textsOf(at(at(result, text(top)), "staged")), Texts{"d"});
        git(top, {"checkout", "--quiet", "."});
    }
}

TEST_F(GitQueryTest, GivesTheLinesThatDifferFromARevision)
{
    const std::string middle = "\n\n\n\n\n\n\n\n";
    writeFile(top / "a b", "one" + middle + "end\n");
    commit({"sub/c d", "gone"});
    writeFile(top / "a b", "1" + middle + "2\n");
    writeFile(top / "sub" / "c d", "one\ntwo\n");
    fs::remove(top / "gone");
    ASSERT_EQ(diff("HEAD"), 0);
    EXPECT_EQ(txHvarArrayLength(at(at(result, in("a b")), "hunks")), 2);
    const TXHVAR hunk = txHvarArrayElement(at(at(result, in("sub/c d")), "hunks"), 0, 0);
    EXPECT_EQ(textOf(at(hunk, "oldStart")) + textOf(at(hunk, "oldCount")), "11");
    EXPECT_EQ(textOf(at(hunk, "newStart")) + textOf(at(hunk, "newCount")), "12");
    EXPECT_EQ(textsOf(at(hunk, "lines")), (Texts{" one", "+two"}));
    EXPECT_TRUE(at(result, in("gone")));
    writeFile(top / "gone", "one\n");
    writeFile(top / "a b", "one" + middle + "2\n");
    for (const fs::path& directory : {top, top / "sub"}) {
        ASSERT_EQ(diff("HEAD", directory), 0);
        EXPECT_EQ(txHvarArrayLength(at(at(result, in("a b")), "hunks")), 1);
        EXPECT_EQ(txHvarArrayLength(at(at(result, in("sub/c d")), "hunks")), 1);
    }
    EXPECT_FALSE(at(result, in("sub/sub/c d")));
}

TEST_F(GitQueryTest, FillsTheKeysThatACommitTableHas)
{
    commit({"f", "sub/g"});
    git(top, {"checkout", "--quiet", "-b", "side"});
    commit({"h"});
    git(top, {"checkout", "--quiet", "main"});
    git(top, {"merge", "--quiet", "--no-ff", "side", "--message", "merged\n\nwhy"});
    ASSERT_EQ(call("_GitGetBranchInfo", {cmStringT(text(top)), "git"}), 0);
    ASSERT_TRUE(editor.runUntil([this] { return call("_GitGetBranchInfoRunning", {}) == 0; }, 20000));
    for (const char* key : {"hash", "parentHash", "otherParents", "authorEmail", "committerDate", "longComment", "modifiedFiles"})
        txHvarSetString(txHvarHashElement(result, key, txCreateMissing), "old");
    const std::string merge = gitLine({"rev-parse", "HEAD"});
    ASSERT_EQ(show(merge.c_str()), 0);
    EXPECT_EQ(textOf(at(result, "hash")) + textOf(at(result, "parentHash")), merge + gitLine({"rev-parse", "HEAD^1"}));
    EXPECT_EQ(textsOf(at(result, "otherParents")), Texts{gitLine({"rev-parse", "side"})});
    EXPECT_EQ(textOf(at(result, "authorEmail")), gitLine({"log", "-1", "--format=%ae"}));
    EXPECT_EQ(textOf(at(result, "committerDate")),
              gitLine({"log", "-1", "--format=%cd", "--date=format-local:%Y-%m-%d %H:%M:%S"}));
    EXPECT_EQ(textsOf(at(result, "longComment")), (Texts{"merged", "", "why", ""}));
    EXPECT_EQ(textsOf(at(result, "modifiedFiles")), Texts{"h"});
    EXPECT_EQ(at(result, "comment"), 0);

    txHvarSetString(at(result, "parentHash"), "old");
    ASSERT_EQ(show(gitLine({"rev-parse", "HEAD~1"}).c_str()), 0);
    EXPECT_EQ(textOf(at(result, "parentHash")), "old") << "this commit has no parent";
    EXPECT_EQ(textsOf(at(result, "longComment")), (Texts{"files", ""}));
    EXPECT_EQ(textsOf(at(result, "modifiedFiles")), (Texts{"f", "sub/g"}));
}

}  // namespace
