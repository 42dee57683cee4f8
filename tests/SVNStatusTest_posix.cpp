#include "common/CommandRunner.h"
#include "filewatcher/status/SVNStatusThread.h"
#include "tests/ModuleFixture.h"

#include <netinet/in.h>
#include <poll.h>
#include <unistd.h>

#include <atomic>
#include <cstdlib>
#include <thread>

namespace {

void run(const std::string& commandLine, const fs::path& directory)
{
    const CaptureResult result = captureCommand(cmROStringT(commandLine), 0, directory.string(), {}, [](cmROStringT) {});
    EXPECT_EQ(result.status, 0) << commandLine << ": " << result.failure.c_str();
    EXPECT_EQ(result.errorOutput.view().find("svn: E"), cmROStringT::npos) << result.errorOutput.c_str();
}

TEST_F(ModuleTest, GetsTheLocalStatusWhileARealServerIsSilent)
{
    const TempFolder folder;
    const int server = socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0);
    sockaddr_in address{AF_INET, 0, {htonl(INADDR_LOOPBACK)}, {}};
    socklen_t size = sizeof address;
    auto* const generic = reinterpret_cast<sockaddr*>(&address);
    ASSERT_TRUE(bind(server, generic, size) == 0 && listen(server, 8) == 0 && getsockname(server, generic, &size) == 0);
    run("svnadmin create repo", folder.path());
    const std::string checkOut = "svn checkout --quiet svn://127.0.0.1:" + std::to_string(ntohs(address.sin_port)) + "/repo wc";
    std::thread client([&] { run(checkOut, folder.path()); });
    const int connection = accept(server, nullptr, nullptr);
    const std::string stream = std::to_string(connection);
    EXPECT_EQ(std::system(("bash -c 'svnserve -i -r " + text(folder.path()) + " <&" + stream + " >&" + stream + "'").c_str()), 0);
    close(connection);
    client.join();

    std::atomic<std::uint32_t> now = 0;
    cmMutex lock;
    SVNStatusThread thread(lock, [&now] { return now.load(); });
    thread.setStatusConfig("svn", 5000, -1);
    ASSERT_EQ(thread.start(), 0);
    thread.addPath(text(folder / "wc"), "", true, false);
    pollfd listening{server, POLLIN, 0};
    EXPECT_EQ(poll(&listening, 1, 10000), 1);  // svn is connected, and hears nothing
    // What svn has written before, a header, may be read only now: more than one limit has to pass.
    EXPECT_TRUE(eventually([&] { return editor.runUntil([&] { return !passesEnded.empty(); }, 20) || (now += 15000, false); }));
    EXPECT_EQ(waitForPass(text(folder / "wc")), 0);
    EXPECT_EQ(reason, "the server did not answer within 15 s");
    thread.requestStop();
    thread.join();
    close(server);
}

TEST_F(ModuleTest, MarksExactlyTheFilesThatTheRealSubversionCallsModified)
{
    const TempFolder folder;
    const fs::path top = folder / "a wc & more";
    const std::string checkOut = "svn checkout --quiet file://" + (folder / "repo").string();
    run("svnadmin create repo", folder.path());
    run(checkOut + " \"a wc & more\"", folder.path());
    const Texts odd{"a b", "at@2", "a&b", "less<", "\xC3\xBC.txt", "it's", "50%", "sub/deep", "-dash"};
    for (const Texts& names : {odd, Texts{"normal", "deleted", "newer"}}) {
        for (const std::string& name : names)
            writeFile(top / name, "one\n");
    }
    run("svn add --quiet --force --no-ignore .", top);
    run("svn commit --quiet --message x", top);
    run(checkOut + " other", folder.path());
    writeFile(folder / "other/newer", "from elsewhere\n");
    run("svn commit --quiet --message y", folder / "other");
    std::map<std::string, std::string> expected;
    for (const std::string& name : odd) {
        writeFile(top / name, "two, changed\n");
        expected[(top / name).string()] = "mod";
    }
    writeFile(top / "added", "new\n");
    run("svn add --quiet added", top);
    run("svn remove --quiet deleted", top);
    writeFile(top / "unversioned", "x\n");

    setTool("svn");
    EXPECT_EQ(pass(top.string(), svnType), 0);
    EXPECT_EQ(localStatus(), expected);
    EXPECT_EQ(record((top / "newer").string()), "/mod/1");
    EXPECT_EQ(record((top / "normal").string()), "//1");
    for (const char* untouched : {"added", "deleted", "unversioned"})
        EXPECT_FALSE(editor.record((top / untouched).string())) << untouched;
    for (const fs::path& link : {folder / "link", top / "link", folder / "other/link"}) {
        fs::create_directory_symlink(top / "sub", link);
        for (int round = 0; round < 2; ++round) {
            EXPECT_EQ(pass(link.string(), svnType), 0);
            EXPECT_EQ(record((link / "deep").string()), "mod//1") << link;
        }
    }
    fs::create_directory_symlink(folder / "other", top / "versioned");
    run("svn add --quiet versioned", top);
    writeFile(folder / "other/normal", "two, changed\n");
    EXPECT_EQ(pass((top / "versioned").string(), svnType), 0);
    EXPECT_EQ(record((top / "versioned/normal").string()), "mod//1");
    fs::remove(folder / "link");
    fs::create_directory_symlink(folder.path(), folder / "link");
    EXPECT_EQ(pass((folder / "link").string(), svnType), -1);
}

}  // namespace
