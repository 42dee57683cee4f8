#include "benchmarks/BenchModule.h"
#include "benchmarks/BenchRepository.h"
#include "benchmarks/Measurement.h"
#include "benchmarks/ScratchFolder.h"
#include "benchmarks/System.h"

#include <chrono>
#include <thread>

namespace fs = std::filesystem;

namespace {

constexpr std::int32_t queueRounds = 21;
constexpr std::int32_t queuedPaths = 10000;
constexpr std::int32_t timedPaths = 100;
constexpr std::int32_t earlyPath = 100;

constexpr int passRounds = 21;
constexpr int repositoryCount = 50;
constexpr int filesPerRepository = 10;

/// Adds the paths from `first` on and returns the time for each, in microseconds.
double addPaths(BenchModule& module, const cmArray<cmArray<CallArgument>>& paths, std::int32_t first, std::int32_t count)
{
    const double time = elapsedMilliseconds([&] {
        for (std::int32_t number = first; number < first + count; ++number)
            module.call("filewatcherAddPath", paths.at(static_cast<std::size_t>(number)));
    });
    return time * 1000 / count;
}

/// Creates a repository with one modified file.
void makeSmallRepository(const fs::path& top)
{
    makeRepository(top);
    for (int file = 0; file < filesPerRepository; ++file)
        writeFile(top / ("file" + std::to_string(file)), "file " + std::to_string(file) + "\n");
    runGit(top, "add .");
    runGit(top, "commit --quiet --message first");
    writeFile(top / "file0", "modified\n");
}

}  // namespace

Row measureQueue()
{
    BenchModule module(programInPath("git"));
    module.call("filewatcherSetSuspendState", {1});  // nothing is taken from the queue
    cmArray<cmArray<CallArgument>> paths;
    for (std::int32_t number = 0; number < queuedPaths + timedPaths; ++number) {
        const std::string path = "/home/ada/projects/directory" + std::to_string(number);
        paths.push_back({cmStringT(cmROStringT(path)), BenchModule::gitType, 1});
    }
    Samples samples;
    for (std::int32_t round = 0; round < queueRounds; ++round) {
        constexpr std::int32_t early = earlyPath - timedPaths / 2;
        constexpr std::int32_t late = queuedPaths - timedPaths / 2;
        addPaths(module, paths, 0, early);
        samples.reference.push_back(addPaths(module, paths, early, timedPaths));
        addPaths(module, paths, early + timedPaths, late - early - timedPaths);
        samples.ours.push_back(addPaths(module, paths, late, timedPaths));
        module.call("filewatcherRemoveType", {BenchModule::gitType});
    }
    module.call("filewatcherSetSuspendState", {0});
    return makeRow("the 10,000th path added, against the 100th", "us", samples, Aim::ratioAtMost, 1.5);
}

Row measureManyRepositories()
{
    const ScratchFolder folder;
    const std::string git = programInPath("git");
    std::vector<std::string> tops;
    std::string script;
    for (int number = 0; number < repositoryCount; ++number) {
        const fs::path top = folder / ("repository" + std::to_string(number));
        makeSmallRepository(top);
        tops.push_back(top.string());
        script += (script.empty() ? "" : " && ") + bench::statusScript(git, top, "");
    }
    // When an index is as old as the files, git reads them all in every pass.
    std::this_thread::sleep_for(std::chrono::milliseconds(1100));
    for (const std::string& top : tops)
        runGit(top, "update-index -q --refresh");
    BenchModule module(git);
    const auto ours = [&] {
        const double time = elapsedMilliseconds([&] { module.statusPasses(tops); });
        if (module.takeMarkedFiles() != tops.size())
            throw BenchError("a round did not mark one file in each repository");
        return time;
    };
    const Samples samples = interleave(passRounds, ours, [&] { return bench::timeInShell(script); });
    return makeRow("a round over 50 repositories", "ms", samples, Aim::ratioAtMost, 1.0);
}
