#include "common/cmPath.h"
#include "filewatcher/git/GitCommand.h"
#include "tests/GitStatusFixture.h"

namespace {

/// A value as text. Every element is in brackets, after its key if it has one.
std::string shown(const VariableValue& value)
{
    std::string text;
    if (const auto* string = std::get_if<cmStringT>(&value))
        text = string->c_str();
    if (const auto* number = std::get_if<std::int64_t>(&value))
        text = std::to_string(*number);
    if (const auto* array = std::get_if<VariableArray>(&value)) {
        for (const auto& element : *array)
            text += "[" + shown(element->value) + "]";
    }
    if (const auto* table = std::get_if<VariableTable>(&value)) {
        for (const auto& [key, element] : *table)
            text += key.c_str() + ("[" + shown(element->value) + "]");
    }
    return text;
}

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
    std::int32_t show(const std::string& revision)
    {
        return call("_GitGetCommitInfo", {"git", cmStringT(text(top)), revision.c_str(), CallArgument::variable(result)});
    }
    /// What git itself prints of a commit.
    std::string gitLog(const std::string& format, const std::string& revision = "HEAD") const
    {
        const std::string output =
            git(top, {"log", "-1", "--format=" + format, "--date=format-local:%Y-%m-%d %H:%M:%S", revision});
        return output.substr(0, output.find('\n'));
    }
    std::string shownResult() const { return shown(*editor.value(result)); }
    /// One field of all entries of the history; the first entry is the root.
    Texts fields(const char* name) const
    {
        Texts texts;
        for (const auto& entry : std::get<VariableArray>(*editor.value(result)))
            texts.push_back(shown(std::get<VariableInstance>(entry->value).fields.at(name)->value));
        return texts;
    }

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
    const std::string hash = gitLog("%H", "HEAD~1");
    EXPECT_EQ(fields("revision"), (Texts{"root", "Working file", hash, gitLog("%H", "HEAD~2")}));
    EXPECT_EQ(fields("revisionCaption")[2], hash.substr(0, 7));
    EXPECT_EQ(fields("author"), (Texts{"(null)", "(null)", "Ada", "Ada"}));
    EXPECT_EQ(fields("date")[2], gitLog("%cd", hash));
    EXPECT_EQ(fields("picIndex")[2], std::to_string(txFindPicture("_f_doc.svg")));
    EXPECT_EQ(fields("comment"), (Texts{"(null)", "Not yet committed", "rename\n\nwhy\n", "files\n"}));
    EXPECT_EQ(fields("affectedFilesDetails"), (Texts{"(null)", "(null)", "sub/new", "sub/old"}));
    EXPECT_EQ(fields("curVersionFilename"), (Texts{"(null)", "sub/new", "sub/new", "sub/old"}));
    EXPECT_EQ(fields("firstChildIndex"), (Texts{"1", "-1", "-1", "-1"}));
    EXPECT_EQ(fields("parentIndex"), (Texts{"-1", "0", "0", "0"}));
    EXPECT_EQ(fields("lsibIndex"), (Texts{"-1", "-1", "1", "2"}));
    EXPECT_EQ(fields("rsibIndex"), (Texts{"-1", "2", "3", "-1"}));

    ASSERT_EQ(history("sub/new", "HEAD~1", 1), 0);
    EXPECT_NE(lastCommand.find("--max-count=1  \"--pretty"), std::string::npos);
    EXPECT_NE(lastCommand.find("%x01\" HEAD~1 -- new"), std::string::npos);
    EXPECT_EQ(fields("revision"), (Texts{"root", hash}));
    writeFile(top / "untracked", "x");
    EXPECT_EQ(history("untracked", "", 0, 0, 1), 0);
    EXPECT_EQ(fields("firstChildIndex"), Texts{"-1"});
    if (cmNativePathStyle == cmPathStyle::windows)
        return;  // no symbolic links under Wine
    fs::create_directory_symlink(top, folder / "link");
    ASSERT_EQ(history(text(folder / "link/sub/new"), "", 0, 0, 1), 0);
    EXPECT_EQ(fields("curVersionFilename")[1], "sub/new");
}

TEST_F(GitQueryTest, TakesEveryFileNameForAFile)
{
    Texts names = oddFileNames();
    names.insert(names.end(), {"main", "HEAD", "^main", "main..HEAD", "gone"});
    commit(names);
    for (const char* name : {"gone", "^main", "main..HEAD"})
        fs::remove(top / name);
    for (const std::string& name : names) {
        EXPECT_EQ(history(name), 0) << name;
        EXPECT_EQ(fields("affectedFilesDetails"), (Texts{"(null)", name}));
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
    EXPECT_EQ(shownResult(), "as it was");
    EXPECT_FALSE(fs::exists(top / "ran"));
}

TEST_F(GitQueryTest, TreatsAnErrorAsFatalOnlyWithoutOutput)
{
    commit({"a"});
    git(top, {"branch", "side"});
    cmStringT output("old");
    EXPECT_EQ(runGitQuery("\"git\" branch -d side missing", text(top), output).status, 0);
    EXPECT_TRUE(output.view().starts_with("Deleted branch side"));
    EXPECT_EQ(runGitQuery("\"git\" branch -d missing", text(top), output).status, -1);
    EXPECT_EQ(output, "");
    EXPECT_EQ(runGitQuery(cmROStringT(text(folder / "missing")), text(top), output).status, -102646);
    CaptureControl control;
    control.stopRequested = [] { return true; };
    EXPECT_EQ(runGitCommand("\"git\" version", text(top), control, [](cmROStringT) {}).status, -102621);
}

TEST_F(GitQueryTest, GivesTheLinesThatDifferFromARevision)
{
    git(top, {"config", "diff.context", "0"});
    git(top, {"config", "diff.noprefix", "true"});
    writeFile(top / "a b", "1\n2\n3\n");
    commit({"sub/c d"});
    writeFile(top / "a b", "one\n2\nthree\n");
    writeFile(top / "sub" / "c d", "one\ntwo\n");
    const std::string first = "[lines[[-1][+one]]newCount[1]newStart[1]oldCount[1]oldStart[1]]";
    const std::string second = "[lines[[-3][+three]]newCount[1]newStart[3]oldCount[1]oldStart[3]]";
    const auto entry = [this](const char* name, const std::string& hunks) {
        return in(name) + "[binary[0]hunks[" + hunks + "]newMode[100644]oldMode[100644]oldPath[]]";
    };
    const std::string inSub = entry("sub/c d", "[lines[[+two]]newCount[1]newStart[2]oldCount[0]oldStart[1]]");
    ASSERT_EQ(diff("HEAD"), 0);
    EXPECT_EQ(shownResult(), entry("a b", first + second) + inSub);
    writeFile(top / "a b", "one\n2\n3\n");
    for (const fs::path& directory : {top, top / "sub"}) {
        ASSERT_EQ(diff("HEAD", directory), 0);
        EXPECT_EQ(shownResult(), entry("a b", first) + inSub) << "of " << directory;
    }
    git(top, {"branch", "sub"});
    git(top, {"add", "a b"});
    txHvarSetString(result, "");
    ASSERT_EQ(diff("sub"), 0);
    EXPECT_EQ(shownResult(), entry("a b", first) + inSub) << "with a branch that a folder shares its name with";
    txHvarSetString(result, "");
    ASSERT_EQ(diff(""), 0);
    EXPECT_EQ(lastCommand, "\"git\" --no-pager diff   --name-only --cached");
    EXPECT_EQ(shownResult(), text(top) + "[local[[sub/c d]]staged[[a b]]]");
}

TEST_F(GitQueryTest, GivesWhatAMergeChangedAgainstAllItsParents)
{
    commit({"sub/f"});
    git(top, {"mv", "sub/f", "sub/g"});
    git(top, {"commit", "--quiet", "--message", "renamed"});
    ASSERT_EQ(diff("HEAD~1", top / "sub"), 0);
    EXPECT_EQ(shownResult(), in("sub/g") + "[binary[0]hunks[]newMode[]oldMode[]oldPath[" + in("sub/f") + "]]");
    writeFile(top / "sub" / "g", "two\n");
    git(top, {"commit", "--quiet", "--all", "--message", "two"});
    writeFile(top / "sub" / "g", "three\n");
    git(top, {"add", "--all"});
    const std::string tree = git(top, {"write-tree"}).substr(0, 40);
    const std::string merge = git(top, {"commit-tree", "-p", "HEAD", "-p", "HEAD~1", "-m", "merge", tree}).substr(0, 40) + "^!";
    for (const fs::path& directory : {top, top / "sub"}) {
        ASSERT_EQ(diff("HEAD", directory), 0);  // its hunk has other keys
        ASSERT_EQ(diff(merge.c_str(), directory), 0);
        const std::string ranges = "oldRanges[[count[1]start[1]][count[1]start[1]]]";
        const std::string hunk = "lines[[- two][ -one][++three]]newCount[1]newStart[1]" + ranges;
        EXPECT_TRUE(shownResult().ends_with(in("sub/g") + "[binary[0]hunks[[" + hunk + "]]newMode[]oldMode[]oldPath[]]"))
            << shownResult();
    }
}

TEST_F(GitQueryTest, FillsTheKeysThatACommitTableHas)
{
    git(top, {"config", "log.showRoot", "false"});
    commit({"f", "sub/g"});
    git(top, {"checkout", "--quiet", "-b", "side"});
    commit({"h"});
    git(top, {"checkout", "--quiet", "main"});
    git(top, {"merge", "--quiet", "--strategy=ours", "side", "--message", "merged\n\nwhy"});
    ASSERT_EQ(call("_GitGetBranchInfo", {cmStringT(text(top)), "git"}), 0);
    ASSERT_TRUE(editor.runUntil([this] { return call("_GitGetBranchInfoRunning", {}) == 0; }, 20000));
    for (const char* key : {"hash", "parentHash", "otherParents", "authorEmail", "committerDate", "longComment", "modifiedFiles",
                            "modifiedFilesByParent"})
        txHvarSetString(txHvarHashElement(result, key, txCreateMissing), "old");
    ASSERT_EQ(show(gitLog("%H")), 0);
    const std::string ofMerge = "longComment[[merged][][why][]]modifiedFiles[[h]]modifiedFilesByParent[[][[h]]]otherParents[[";
    EXPECT_EQ(shownResult(), gitLog("authorEmail[%ae]committerDate[%cd]hash[%H]") + ofMerge + gitLog("%H", "side")
                                 + gitLog("]]parentHash[%H]", "HEAD~1"));
    const std::string merge = shownResult();
    txHvarSetString(txHvarHashElement(result, "hash", 0), "old");
    writeFile(top / gitLog("%H"), "git refuses the hash, which only the second run gives it");
    ASSERT_EQ(show(gitLog("%h")), 0);
    EXPECT_EQ(shownResult(), merge);
    EXPECT_TRUE(editor.takeQueryError().view().starts_with("fatal: ambiguous argument")) << "told";
    ASSERT_EQ(show(gitLog("%H", "HEAD~1")), 0);
    const std::string ofRoot = "longComment[[files][]]modifiedFiles[[f][sub/g]]modifiedFilesByParent[]otherParents[]";
    EXPECT_EQ(shownResult(),
              gitLog("authorEmail[%ae]committerDate[%cd]hash[%H]", "HEAD~1") + ofRoot + gitLog("parentHash[%H]", "HEAD~1"))
        << "a commit without a parent leaves the text of that key";
    txHvarSetString(txHvarHashElement(result, "comment", txCreateMissing), "old");
    EXPECT_EQ(call("_GitGetCommitInfo", {"no-git", cmStringT(text(top)), "", CallArgument::variable(result)}), 0);
    const std::string ofWorkingCopy = shownResult();
    for (const char* part : {"comment[Uncomitted changes]", "longComment[]modifiedFiles[]"})
        EXPECT_NE(ofWorkingCopy.find(part), std::string::npos) << ofWorkingCopy;
}

}  // namespace
