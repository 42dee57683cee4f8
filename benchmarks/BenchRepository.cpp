#include "benchmarks/BenchRepository.h"

#include "benchmarks/BenchModule.h"
#include "benchmarks/Measurement.h"
#include "benchmarks/ScratchFolder.h"
#include "benchmarks/System.h"
#include "common/CommandQuoting.h"
#include "common/CommandRunner.h"
#include "common/cmStringCatHelper.h"

namespace fs = std::filesystem;

namespace {

constexpr int blockLength = 10;
constexpr int authors = 1000;
constexpr long long firstTime = 1'000'000'000;
constexpr int secondsApart = 60;

// Of each block of commits one is on a side branch, which the last commit of the block merges.
constexpr int sidePlace = 6;
constexpr int mergePlace = 9;

/// The newest commit of the main line before commit `number`.
int mainBefore(int number)
{
    return (number - 1) % blockLength == sidePlace ? number - 2 : number - 1;
}

}  // namespace

std::string runGit(const fs::path& directory, const std::string& arguments)
{
    cmStringT output("");
    const cmStringT command = cmCat(quoteArgument(programInPath("git"))) + " " + arguments;
    const CaptureResult result =
        captureCommand(command, spawnPlainCommand, directory.string(), {}, [&output](cmROStringT bytes) { output += bytes; });
    if (result.status != 0 || result.errorOutput.view().find("fatal:") != cmROStringT::npos)
        throw BenchError("git " + arguments + ": " + result.failure.c_str() + result.errorOutput.c_str());
    return std::string(cmWithoutLineEnd(output));
}

void makeRepository(const fs::path& top)
{
    fs::create_directories(top);
    runGit(top, "init --quiet --initial-branch=main");
    for (const char* setting : {"user.name Bench", "user.email bench@example.org", "commit.gpgSign false", "gc.auto 0"})
        runGit(top, std::string("config ") + setting);
}

void importHistory(const fs::path& top, const std::string& stream)
{
    const fs::path file = top / ".git" / "stream";
    writeFile(file, stream);
    bench::runInShell(bench::fastImportScript(top, file));
    fs::remove(file);
}

MadeHistory::MadeHistory(const fs::path& top, int commits) : m_top(top), m_commits(commits)
{
    makeRepository(top);
    importHistory(top, stream());
}

std::string MadeHistory::stream() const
{
    std::string text;
    for (int number = 0; number < m_commits; ++number)
        text += commit(number);
    return text;
}

std::string MadeHistory::commit(int number) const
{
    const int place = number % blockLength;
    const bool side = place == sidePlace;
    const std::string author = "Author Number " + std::to_string(number * 7919LL % authors);
    const std::string identity = author + " <author" + std::to_string(number * 7919LL % authors) + "@example.org> "
                                 + std::to_string(firstTime + static_cast<long long>(number) * secondsApart) + " +0000\n";
    std::string subject = "commit " + std::to_string(number) + ": what was changed and the reason for it";
    if (number % rareEvery == rareEvery / 2)
        subject += std::string(" ") + rareWord;
    std::string text = std::string("commit refs/heads/") + (side ? "side" : "main") + "\nmark :" + std::to_string(number + 1)
                       + "\nauthor " + identity + "committer " + identity + "data " + std::to_string(subject.size()) + "\n"
                       + subject + "\n";
    if (number > 0)
        text += "from :" + std::to_string(mainBefore(number) + 1) + "\n";
    if (place == mergePlace)
        text += "merge :" + std::to_string(number - mergePlace + sidePlace + 1) + "\n";
    return text + "\n";
}
