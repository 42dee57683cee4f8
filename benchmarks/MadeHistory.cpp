#include "benchmarks/MadeHistory.h"

#include "benchmarks/BenchRepository.h"
#include "benchmarks/ScratchFolder.h"
#include "benchmarks/System.h"

namespace {

constexpr int blockLength = 10;
constexpr int authors = 1000;
constexpr long long firstTime = 1'000'000'000;
constexpr int secondsApart = 60;

// Of each ten commits on the main line one begins a side branch beside it and the last merges that.
constexpr int sidePlace = 6;
constexpr int mergePlace = 9;

/// The main line's newest commit before this one.
int mainBefore(int number)
{
    return (number - 1) % blockLength == sidePlace ? number - 2 : number - 1;
}

}  // namespace

MadeHistory::MadeHistory(const std::filesystem::path& top, int commits) : m_top(top), m_commits(commits)
{
    makeRepository(top);
    const std::filesystem::path file = top / ".git" / "stream";
    writeFile(file, stream());
    bench::runInShell(bench::fastImportScript(top, file));
    std::filesystem::remove(file);
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
