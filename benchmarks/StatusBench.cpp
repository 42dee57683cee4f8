#include "benchmarks/BenchModule.h"
#include "benchmarks/BenchRepository.h"
#include "benchmarks/Measurement.h"
#include "benchmarks/ScratchFolder.h"
#include "benchmarks/System.h"

#include <chrono>
#include <thread>

namespace fs = std::filesystem;

namespace {

constexpr int rounds = 41;
constexpr int folderCount = 100;
constexpr int filesPerFolder = 50;
constexpr std::size_t modifiedCount = 50;

fs::path fileOf(const fs::path& top, int folder, int file)
{
    return top / ("folder" + std::to_string(folder)) / ("file" + std::to_string(file) + ".txt");
}

/// Creates a working copy whose files are all committed; one in every second folder is modified afterwards.
void makeWorkingCopy(const fs::path& top)
{
    makeRepository(top);
    for (int folder = 0; folder < folderCount; ++folder) {
        fs::create_directories(fileOf(top, folder, 0).parent_path());
        for (int file = 0; file < filesPerFolder; ++file)
            writeFile(fileOf(top, folder, file), "file " + std::to_string(file) + " of " + std::to_string(folder) + "\n");
    }
    runGit(top, "add .");
    runGit(top, "commit --quiet --message first");
    for (int folder = 0; folder < folderCount; folder += 2)
        writeFile(fileOf(top, folder, folder % filesPerFolder), "modified\n");
    // When the index is as old as the files, git reads them all in every pass.
    std::this_thread::sleep_for(std::chrono::milliseconds(1100));
    runGit(top, "update-index -q --refresh");
}

Row measure(const std::string& what, const fs::path& top, bool made)
{
    BenchModule module(programInPath("git"));
    const auto ours = [&] {
        const double time = elapsedMilliseconds([&] { module.statusPass(top.string()); });
        const std::size_t marked = module.takeMarkedFiles();
        if (made && marked != modifiedCount)
            throw BenchError("a pass marked " + std::to_string(marked) + " files instead of " + std::to_string(modifiedCount));
        return time;
    };
    const std::string script = bench::statusScript(programInPath("git"), top);
    const Samples samples = interleave(rounds, ours, [&] { return bench::timeInShell(script); });
    return makeRow(what, "ms", samples, Aim::ratioAtMost, 1.15);
}

}  // namespace

Row measureStatusPass(const std::optional<std::string>& repository)
{
    if (!repository) {
        const ScratchFolder folder;
        makeWorkingCopy(folder / "repository");
        return measure("status pass, 5,000 files", folder / "repository", true);
    }
    const fs::path top = runGit(fs::absolute(*repository), "rev-parse --show-toplevel");
    return measure("status pass, " + top.filename().string(), top, false);
}
