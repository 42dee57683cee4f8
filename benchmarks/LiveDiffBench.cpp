#include "benchmarks/BenchModule.h"
#include "benchmarks/BenchRepository.h"
#include "benchmarks/Measurement.h"
#include "benchmarks/ScratchFolder.h"
#include "benchmarks/System.h"
#include "common/cmStringCatHelper.h"
#include "txapi/txapi.h"

namespace fs = std::filesystem;

namespace {

constexpr int rounds = 15;
constexpr std::size_t revisionSize = 50'000'000;

/// Lets the module fetch a file's committed revision; returns the cache file.
fs::path fetch(BenchModule& module, const fs::path& file)
{
    const TXHVAR cache = txHvarAlloc();
    const cmStringT command = cmCat("\"") + programInPath("git") + "\" --no-pager show HEAD:" + file.filename().string();
    const std::int32_t status = module.call("_SVCLiveDiffGetVCFileImmediate",
                                            {"", command, cmStringT(cmROStringT(file.string())), CallArgument::variable(cache),
                                             cmStringT(cmROStringT(file.parent_path().string()))});
    cmStringT path;
    txHvarGetString(cache, path);
    txHvarFree(cache);
    if (status != 0)
        throw BenchError("the revision was not fetched: " + std::to_string(status));
    return path.c_str();
}

}  // namespace

Row measureLiveDiff()
{
    const ScratchFolder folder;
    const fs::path file = folder / "repository" / "large.bin";
    makeRepository(file.parent_path());
    writeLargeFile(file, revisionSize);
    runGit(file.parent_path(), "add .");
    runGit(file.parent_path(), "commit --quiet --message large");
    BenchModule module(programInPath("git"));
    module.editor().setDirectory(cmROStringT((folder / "cache").string()));
    const std::string script = bench::showScript(programInPath("git"), file, folder / "copy");
    fs::path fetched;
    const Samples samples = interleave(
        rounds, [&] { return elapsedMilliseconds([&] { fetched = fetch(module, file); }); },
        [&] { return bench::timeInShell(script); });
    if (fs::file_size(fetched) != revisionSize)
        throw BenchError("the cache file is not whole");
    return makeRow("immediate fetch of 50 MB", "ms", samples, Aim::ratioAtMost, 1.15);
}
