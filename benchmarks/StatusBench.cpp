#include "benchmarks/BenchModule.h"
#include "benchmarks/BenchRepository.h"
#include "benchmarks/Measurement.h"
#include "benchmarks/ScratchFolder.h"
#include "benchmarks/System.h"

#include <chrono>
#include <cstdio>
#include <thread>

namespace fs = std::filesystem;

namespace {

constexpr int rounds = 41;
constexpr int growthRounds = 21;
constexpr int fewFiles = 1000;
constexpr int files = 30'000;
constexpr int manyFiles = 200'000;
constexpr int filesPerFolder = 50;
constexpr int filesPerModified = 100;
constexpr const char* noUntracked = " -uno";

/// A Git repository with so many committed files, of which one in a hundred is modified, and so many untracked ones beside them.
class WorkingCopy {
public:
    WorkingCopy(int tracked, int untracked) : m_modified(static_cast<std::size_t>(tracked / filesPerModified))
    {
        makeRepository(top());
        for (int file = 0; file < tracked; file += filesPerFolder)
            fs::create_directories(pathOf(file).parent_path());
        for (int file = 0; file < tracked; ++file)
            writeFile(pathOf(file), "file " + std::to_string(file) + "\n");
        runGit(top(), "add .");
        runGit(top(), "commit --quiet --message first");
        for (int file = 0; file < tracked; file += filesPerModified)
            writeFile(pathOf(file), "modified, and longer\n");
        for (int file = 0; file < untracked; ++file)
            writeFile(pathOf(file) += ".new", "new\n");
        // When the index is as old as the files, git reads them all in every pass.
        std::this_thread::sleep_for(std::chrono::milliseconds(1100));
        runGit(top(), "update-index -q --refresh");
    }

    fs::path top() const { return m_folder / "repository"; }
    std::size_t modified() const { return m_modified; }

private:
    fs::path pathOf(int file) const
    {
        return top() / ("folder" + std::to_string(file / filesPerFolder)) / ("file" + std::to_string(file) + ".txt");
    }

    ScratchFolder m_folder;
    std::size_t m_modified;
};

/// Times passes over `top` and, in turn, the same two commands in a shell. `modified`: how many files a pass marks, if known.
Samples measure(const fs::path& top, std::optional<std::size_t> modified, const std::string& options, int times)
{
    BenchModule module(programInPath("git"));
    const auto ours = [&] {
        const double time = elapsedMilliseconds([&] { module.statusPass(top.string()); });
        const std::size_t marked = module.takeMarkedFiles();
        if (marked != modified.value_or(marked))
            throw BenchError("a pass marked " + std::to_string(marked) + " files instead of " + std::to_string(*modified));
        return time;
    };
    const std::string script = bench::statusScript(programInPath("git"), top, options);
    return interleave(times, ours, [&] { return bench::timeInShell(script); });
}

Row measureCopy(const std::string& what, const WorkingCopy& copy, const std::string& options, double limit)
{
    return makeRow(what, "ms", measure(copy.top(), copy.modified(), options, rounds), Aim::ratioAtMost, limit);
}

}  // namespace

std::vector<Row> measureStatusPass(const std::optional<std::string>& repository)
{
    if (!repository) {
        const WorkingCopy mixed(files, files);
        const WorkingCopy plain(files, 0);
        return {measureCopy("status pass, 30,000 files, as many untracked", mixed, "", 0.5),
                measureCopy("the same against git status -uno", mixed, noUntracked, 1.05),
                measureCopy("status pass, 30,000 files, none untracked", plain, "", 1.0)};
    }
    const fs::path named = fs::canonical(*repository);
    if (runGit(named, "rev-parse --is-inside-work-tree") != "true") {
        std::fprintf(stderr, "filewatcher_bench: status pass: left out, as %s has no work tree\n", named.filename().c_str());
        return {};
    }
    const fs::path top = runGit(named, "rev-parse --show-toplevel");
    const auto against = [&](const std::string& what, const std::string& options, double limit) {
        return makeRow(what, "ms", measure(top, std::nullopt, options, rounds), Aim::ratioAtMost, limit);
    };
    return {against("status pass, " + top.filename().string(), "", 1.0),
            against("the same against git status -uno", noUntracked, 1.05)};
}

Row measureStatusGrowth(bool large)
{
    const auto samples = [](int tracked) {
        const WorkingCopy copy(tracked, 0);
        return measure(copy.top(), copy.modified(), noUntracked, growthRounds);
    };
    const std::string what = std::string("status pass, each further file, to ") + (large ? "200,000" : "30,000");
    return makeSlopeRow(what, samples, fewFiles, large ? manyFiles : files, 1.05);
}
