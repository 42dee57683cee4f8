#include "benchmarks/BenchModule.h"
#include "benchmarks/Measurement.h"
#include "benchmarks/ScratchFolder.h"
#include "benchmarks/System.h"

namespace fs = std::filesystem;

namespace {

constexpr int passRounds = 21;
constexpr int growthRounds = 7;
constexpr int fewFiles = 10000;
constexpr int manyFiles = 50000;
constexpr int filesPerFolder = 100;

/// A Subversion working copy of so many files, of which one in a hundred is modified.
class WorkingCopy {
public:
    explicit WorkingCopy(int files) : m_modified(static_cast<std::size_t>(files / filesPerFolder)), m_top(m_folder / "wc")
    {
        for (int i = 0; i < files; i += filesPerFolder)
            fs::create_directories((m_folder / "files" / name(i)).parent_path());
        for (int i = 0; i < files; ++i)
            writeFile(m_folder / "files" / name(i), "file " + std::to_string(i) + "\n");
        bench::runInShell(bench::svnCheckoutScript(m_folder / "files", m_top));
        for (int i = 0; i < files; i += filesPerFolder)
            writeFile(m_top / name(i), "modified, and longer\n");
    }

    const fs::path& top() const { return m_top; }

    /// The time of one pass in milliseconds; it starts without records.
    double pass(BenchModule& module) const
    {
        const double time = elapsedMilliseconds([&] { module.statusPass(m_top.string()); });
        if (const std::size_t marked = module.takeMarkedFiles(); marked != m_modified)
            throw BenchError("a pass marked " + std::to_string(marked) + " files instead of " + std::to_string(m_modified));
        return time;
    }

private:
    static fs::path name(int file)
    {
        return fs::path("folder" + std::to_string(file / filesPerFolder)) / ("file" + std::to_string(file) + ".txt");
    }

    ScratchFolder m_folder;
    std::size_t m_modified;
    fs::path m_top;
};

/// Passes over a new working copy beside the same command in a shell.
Samples measurePasses(int files, int rounds)
{
    const WorkingCopy copy(files);
    BenchModule module(programInPath("svn"), BenchModule::svnType);
    const std::string script = bench::svnStatusScript(programInPath("svn"), copy.top());
    copy.pass(module);  // the first pass also asks the server, the others follow within its minute
    return interleave(
        rounds, [&] { return copy.pass(module); }, [&] { return bench::timeInShell(script); });
}

}  // namespace

Row measureSvnPass()
{
    return makeRow("svn status pass, 10,000 files", "ms", measurePasses(fewFiles, passRounds), Aim::ratioAtMost, 1.15);
}

Row measureSvnGrowth()
{
    const auto measure = [](int files) { return measurePasses(files, growthRounds); };
    return makeSlopeRow("svn pass, each further file, to 50,000", measure, fewFiles, manyFiles, 1.15);
}
