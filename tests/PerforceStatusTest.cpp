#include "tests/ModuleFixture.h"

#include <chrono>
#include <filesystem>

namespace fs = std::filesystem;

namespace {

using Tokens = std::map<std::string, std::pair<std::string, std::string>>;

class PerforceStatusTest : public ModuleTest {
protected:
    PerforceStatusTest()
    {
        const fs::path program = cmSystemPath(builtProgram("testp4"));
        fs::create_directory(folder / "bin");
        fs::create_directory(root);
        fs::copy_file(program, folder / "bin" / program.filename());
        setTool(text(folder / "bin" / program.filename()));
        writeFile(folder / "bin/depot/client", "ada_ws\n" + text(root) + "\n");
    }

    /// A file that is mapped from "main" in the depot to "src" in the workspace, with this content here.
    void add(const std::string& name, int have, int head, const std::string& action, const std::string& content = "one\n")
    {
        m_files += "//depot/main/" + name + ";src/" + name + ";" + std::to_string(have) + ";" + std::to_string(head) + ";"
                   + action + "\n";
        writeFile(folder / "bin/depot/files", m_files);
        writeFile(root / "src" / cmSystemPath(name), content);
    }
    void fail(const std::string& how) { writeFile(folder / "bin/depot/fault", how); }
    std::int32_t perforcePass()
    {
        addPath(text(root), perforceType);
        return waitForPass(text(root));
    }
    Tokens tokens() const
    {
        Tokens found;
        for (const auto& [path, record] : editor.records())
            found[path.c_str()] = {record.localStatus.c_str(), record.repositoryStatus.c_str()};
        return found;
    }
    std::string in(const std::string& name) const { return text(root / "src" / cmSystemPath(name)); }

    TempFolder folder;
    const fs::path root = folder / "my workspace";

private:
    std::string m_files;
};

TEST_F(PerforceStatusTest, GivesEachFileItsTokens)
{
    add("opened.c", 1, 1, "edit");
    add("changed @#%.c", 1, 1, "edit", "two\n");
    add("\xC3\xBC.c", 2, 2, "edit", "two\n");
    add("added.c", 0, 0, "add", "new\n");
    add("behind.c", 1, 3, "-");
    add("missing.c", 0, 1, "-");
    add("opened behind.c", 1, 2, "edit");
    add("untouched.c", 4, 4, "-");
    const Tokens expected{{in("opened.c"), {"edit", ""}},       {in("changed @#%.c"), {"edit|mod", ""}},
                          {in("\xC3\xBC.c"), {"edit|mod", ""}}, {in("added.c"), {"edit|mod", ""}},
                          {in("behind.c"), {"", "mod"}},        {in("opened behind.c"), {"edit", "mod"}}};
    EXPECT_EQ(perforcePass(), 0);
    EXPECT_EQ(tokens(), expected);
    EXPECT_EQ(editor.record(in("opened.c"))->tool, txVCToolPerforce.number);
    EXPECT_TRUE(editor.runUntil([&] { return notifications == 1; }, 5000));
    EXPECT_EQ(perforcePass(), 0);
    EXPECT_EQ(tokens(), expected);
    EXPECT_FALSE(editor.runUntil([&] { return notifications > 1; }, 100));
}

TEST_F(PerforceStatusTest, WritesNothingWhenTheServerDoesNotAnswer)
{
    add("a", 1, 2, "edit");
    for (const char* fault : {"no-server", "expired"}) {
        fail(fault);
        EXPECT_EQ(perforcePass(), -1) << fault;
    }
    fail("flood");
    EXPECT_EQ(perforcePass(), -6657);
    EXPECT_TRUE(editor.records().empty());
}

TEST_F(PerforceStatusTest, PassesOverBrokenRecordsAndEmptyAnswers)
{
    EXPECT_EQ(perforcePass(), 0);
    EXPECT_TRUE(editor.records().empty());
    add("a", 1, 1, "edit");
    fail("broken");
    EXPECT_EQ(perforcePass(), 0);
    EXPECT_EQ(tokens(), (Tokens{{in("a"), {"edit", ""}}}));
}

TEST_F(PerforceStatusTest, AHangingClientHoldsUpNobody)
{
    add("a", 1, 1, "edit");
    fail("hang");
    const std::string client = tool;
    addPath(text(root), perforceType);
    ASSERT_TRUE(editor.runUntil([&] { return passesBegun == 1; }, 10000));
    ASSERT_TRUE(eventually([&] { return processesOf(client) > 0; }));

    setTool("git");
    makeRepository(folder / "repo", {"f"});
    writeFile(folder / "repo/f", "changed\n");
    EXPECT_EQ(pass(text(folder / "repo")), 0);
    writeFile(folder / "svn.xml",
              "<status><target><entry path=\"" + in("s") + "\"><wc-status item=\"modified\"/></entry></target></status>");
    setTool(helperAs(folder, "tool-svn"));
    addPath(text(folder.path()), svnType);
    EXPECT_EQ(waitForPass(text(folder.path())), 0);
    EXPECT_EQ(tokens(), (Tokens{{text(folder / "repo/f"), {"mod", ""}}, {in("s"), {"mod", ""}}}));

    EXPECT_TRUE(passesEnded.empty());
    const auto start = std::chrono::steady_clock::now();
    call("filewatcherStop", {perforceType});
    EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::milliseconds(500));
    EXPECT_EQ(waitForPass(text(root)), -102621);
    EXPECT_TRUE(eventually([&] { return processesOf(client) == 0; }));
}

}  // namespace
