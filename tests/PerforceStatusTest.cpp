#include "common/cmPath.h"
#include "tests/ModuleFixture.h"

namespace {

/// A client that answers each command with the text that the test gives.
class PerforceStatusTest : public ModuleTest {
protected:
    PerforceStatusTest()
    {
        fs::create_directory(root);
        setTool(helperAs(folder, "tool-p4"));
        answer("client-o", "Client:\tada_ws\n\nRoot:\t" + text(root) + "\n");
        answer("-ztagopened", "... depotFile //depot/a%40\n... clientFile //ada_ws/src/a%40\n\n"
                              "... depotFile //depot/b\n... clientFile //ada_ws/src/b\n");
        answer("diff-sa", in("b") + "\n");
        answer("sync-n", "//depot/a%40#2 - is opened and not being changed\n//depot/c#3 - updating " + in("c") + "\n");
    }

    void answer(const std::string& command, const std::string& output, const std::string& error = "")
    {
        writeFile(folder / (command + ".out"), output);
        writeFile(folder / (command + ".err"), error);
    }
    std::int32_t perforcePass() { return pass(text(root), perforceType); }
    std::string in(const std::string& name) const { return text(root / "src" / name); }

    TempFolder folder;
    const fs::path root = folder / "my workspace";
    const Texts tokens{"edit/mod/4", "edit|mod//4", "/mod/4"};  // of the files a@, b and c
};

TEST_F(PerforceStatusTest, GivesEachFileItsTokens)
{
    for (int round = 0; round < 2; ++round) {
        EXPECT_EQ(perforcePass(), 0);
        EXPECT_EQ((Texts{record(in("a@")), record(in("b")), record(in("c"))}), tokens);
        EXPECT_EQ(editor.records().size(), 3u);
    }
    EXPECT_TRUE(editor.runUntil([&] { return notifications == 1; }, 5000));
    stopAndRunEvents();
    EXPECT_EQ(notifications, 1);  // the second pass changed nothing
}

TEST_F(PerforceStatusTest, NamesFilesByTheWatchedLink)
{
    if (cmNativePathStyle == cmPathStyle::windows)
        return;  // no symbolic links under Wine
    const fs::path link = folder / "link";
    fs::create_directory(root / "src");
    fs::create_directory_symlink(root / "src", link);
    fs::create_directory_symlink(root, folder / "root");
    answer("client-o", "Client: ada_ws\nRoot: " + text(folder / "root") + "\n");
    EXPECT_EQ(pass(text(link), perforceType), 0);
    EXPECT_EQ((Texts{record(text(link / "a@")), record(text(link / "b")), record(text(link / "c"))}), tokens);
}

TEST_F(PerforceStatusTest, WritesNothingUnlessAllCommandsSucceed)
{
    for (const char* command : {"client-o", "-ztagopened", "diff-sa", "sync-n"}) {
        const std::string output = readFile(folder / (std::string(command) + ".out"));
        answer(command, output, "File(s) up-to-date.\nYour session has expired, please login again.\n");
        EXPECT_EQ(perforcePass(), -1) << command;
        answer(command, output);
    }
    answer("-ztagopened", "", "File(s) not opened on this client.\r\n");
    answer("diff-sa", "", "... - no such file(s).\n");
    answer("sync-n", "", "File(s) up-to-date.\n");
    EXPECT_EQ(perforcePass(), 0) << "nothing to list";
    answer("client-o", "");
    EXPECT_EQ(perforcePass(), -1);
    EXPECT_TRUE(editor.records().empty());
}

}  // namespace
