#include "tests/TestSupport.h"

#include "common/CommandQuoting.h"
#include "common/CommandRunner.h"
#include "common/cmFile.h"
#include "common/cmPath.h"

#include <gtest/gtest.h>

#include <atomic>
#include <fstream>
#include <random>
#include <sstream>
#include <thread>

std::string text(const fs::path& path)
{
    return std::string(cmPathText(path).view());
}

TempFolder::TempFolder()
{
    static std::atomic<int> counter{0};
    std::random_device random;
    m_path = cmSystemPath(cmRealPath(cmPathText(fs::temp_directory_path())))
             / ("fwtest-" + std::to_string(random()) + "-" + std::to_string(counter++));
    fs::create_directories(m_path);
}

TempFolder::~TempFolder()
{
    // The file of a program that has just ended can stay locked for a moment.
    eventually([this] { return cmRemoveFolder(cmPathText(m_path)); }, std::chrono::seconds(2));
}

void writeFile(const fs::path& path, const std::string& content)
{
    fs::create_directories(path.parent_path());
    std::ofstream(path, std::ios::binary) << content;
}

std::string readFile(const fs::path& path)
{
    std::ostringstream content;
    content << std::ifstream(path, std::ios::binary).rdbuf();
    return content.str();
}

std::string builtProgram(const std::string& name)
{
    const fs::path self = cmSystemPath(cmProgramPath());
    return text((self.parent_path() / name).replace_extension(self.extension()));
}

std::string helperAs(const TempFolder& folder, const std::string& behaviour)
{
    const fs::path helper = cmSystemPath(builtProgram("testhelper"));
    const fs::path copy = (folder / behaviour).replace_extension(helper.extension());
    fs::copy_file(helper, copy, fs::copy_options::overwrite_existing);
    return text(copy);
}

ProgramResult runBuilt(const std::string& name, const Texts& arguments)
{
    const TempFolder folder;
    std::string line;
    for (const std::string& argument : arguments)
        line += std::string(quoteArgument(argument)) + " ";
    const int exitCode = runInto(builtProgram(name), line, folder / "out", folder / "err");
    return {exitCode, readFile(folder / "out"), readFile(folder / "err")};
}

bool eventually(const std::function<bool()>& condition, std::chrono::milliseconds limit)
{
    const auto end = std::chrono::steady_clock::now() + limit;
    while (!condition()) {
        if (std::chrono::steady_clock::now() > end)
            return false;
        std::this_thread::sleep_for(std::chrono::milliseconds(2));
    }
    return true;
}

int affordableStarts(int wanted)
{
    return cmNativePathStyle == cmPathStyle::windows ? (wanted + 9) / 10 : wanted;
}

Texts oddFileNames()
{
    Texts names{"a b", "-dash", "\xC3\xBC.txt", "it's", "$(touch ran)", "a&b", "50% ^off", "%PATH%", "(x) !y!", "sub/deep"};
    if (cmNativePathStyle == cmPathStyle::posix)
        names.insert(names.end(), {"q\"uote", "tab\there", "x -> y", "new\nline", "back\\slash", "a|b"});
    return names;
}

Texts oddFolderNames()
{
    Texts names{"one & two", "-x", "plain", "a[b]", "100% ^(x)", "\xC3\x9C"};
    if (cmNativePathStyle == cmPathStyle::posix)
        names.insert(names.end(), {":(top)", "*"});
    return names;
}

std::string git(const fs::path& directory, const Texts& arguments)
{
    cmStringT command("\"git\"");
    for (const std::string& argument : arguments) {
        command += ' ';
        command += quoteArgument(argument);
    }
    cmStringT output("");
    const CaptureResult result =
        captureCommand(command, 0, text(directory), {}, [&output](cmROStringT bytes) { output += bytes; });
    EXPECT_EQ(result.status, 0) << result.failure.c_str();
    EXPECT_EQ(result.errorOutput.view().find("fatal:"), cmROStringT::npos) << result.errorOutput.c_str();
    return output.c_str();
}

void makeRepository(const fs::path& directory, const Texts& names)
{
    fs::create_directories(directory);
    git(directory, {"init", "--quiet", "--initial-branch=main"});
    git(directory, {"config", "user.name", "Ada"});
    git(directory, {"config", "user.email", "ada@example.org"});
    git(directory, {"config", "commit.gpgSign", "false"});
    if (!names.empty())
        commitFiles(directory, names);
}

void commitFiles(const fs::path& directory, const Texts& names)
{
    for (const std::string& name : names)
        writeFile(directory / cmSystemPath(name), "one\n");
    git(directory, {"add", "--all"});
    git(directory, {"commit", "--quiet", "--message", "files"});
}

void loseObject(const fs::path& repository, const std::string& hash)
{
    const fs::path object = repository / ".git/objects" / hash.substr(0, 2) / hash.substr(2);
    fs::permissions(object, fs::perms::owner_write, fs::perm_options::add);  // Windows keeps what is read-only
    fs::remove(object);
}
