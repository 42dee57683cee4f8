#include "benchmarks/BenchModule.h"
#include "benchmarks/Measurement.h"
#include "benchmarks/ScratchFolder.h"
#include "benchmarks/System.h"

#include <algorithm>

namespace fs = std::filesystem;

namespace {

constexpr int passRounds = 21;
constexpr int growthRounds = 7;
constexpr int filesPerFolder = 100;

/// A working copy of so many files, one in a hundred modified.
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

    /// The time of one pass that begins with no records, in milliseconds.
    double pass(BenchModule& module) const
    {
        const double time = milliseconds([&] { module.statusPass(m_top.string()); });
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

double fastestPass(int files)
{
    const WorkingCopy copy(files);
    BenchModule module(programInPath("svn"), BenchModule::svnType);
    copy.pass(module);  // this one asks the repository
    std::vector<double> times;
    for (int round = 0; round < growthRounds; ++round)
        times.push_back(copy.pass(module));
    return *std::min_element(times.begin(), times.end());
}

}  // namespace

Row measureSvnPass()
{
    const WorkingCopy copy(10000);
    BenchModule module(programInPath("svn"), BenchModule::svnType);
    const std::string script = bench::svnStatusScript(programInPath("svn"), copy.top());
    const Samples samples = interleave(
        passRounds, [&] { return copy.pass(module); }, [&] { return milliseconds([&] { bench::runInShell(script); }); });
    Row row = makeRow("svn status pass, 10,000 files", "ms", median(samples.ours), median(samples.reference));
    row.aim = Aim::ratioAtMost;
    row.limit = 1.2;
    row.rounds = passRounds;
    return row;
}

Row measureSvnGrowth()
{
    const double small = fastestPass(1000);
    const double middle = fastestPass(10000);
    const double large = fastestPass(50000);
    Row row = makeRow("svn pass, each further file, to 50,000", "us", (large - middle) / 40, (middle - small) / 9);
    row.aim = Aim::ratioAtMost;
    row.limit = 1.2;
    row.rounds = growthRounds;
    return row;
}
