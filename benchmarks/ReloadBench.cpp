#include "benchmarks/BenchModule.h"
#include "benchmarks/Measurement.h"
#include "benchmarks/ScratchFolder.h"
#include "benchmarks/System.h"
#include "txapi/txapi.h"

#include <algorithm>

namespace fs = std::filesystem;

namespace {

constexpr int rounds = 21;
constexpr int filesPerFolder = 100;
constexpr std::int32_t budgetMs = 60000;

/// Files on the disk, and the list of their names as the editor has it.
class DatedFiles {
public:
    explicit DatedFiles(int count) : m_list(txHvarAlloc())
    {
        for (int i = 0; i < count; ++i) {
            const fs::path folder = m_folder / ("folder" + std::to_string(i / filesPerFolder));
            fs::create_directories(folder);
            m_names.push_back((folder / ("file" + std::to_string(i))).string());
            writeFile(m_names.back(), "x");
            txHvarSetString(txHvarArrayElement(m_list, i, txCreateMissing), cmROStringT(m_names.back()));
        }
    }
    ~DatedFiles() { txHvarFree(m_list); }
    DatedFiles(const DatedFiles&) = delete;
    DatedFiles& operator=(const DatedFiles&) = delete;

    /// The time of a loop of the system's own calls, in milliseconds, and that of one call of the module's. Right before each
    /// the system was asked for all of them: what it remembers is the same for both.
    double askSystem() const
    {
        bench::readDates(m_names);
        return milliseconds([this] { bench::readDates(m_names); });
    }
    double ask(BenchModule& module) const
    {
        const TXHVAR table = txHvarAlloc();
        bench::readDates(m_names);
        const double time = milliseconds([&] {
            module.call("_GetFastReloadInfoTable",
                        {CallArgument::variable(m_list), 0, 0, CallArgument::variable(table), budgetMs});
        });
        for (const std::string& name : m_names) {
            if (txHvarHashElement(table, name.c_str(), 0) == 0)
                throw BenchError("no date came for " + name);
        }
        txHvarFree(table);
        return time;
    }

private:
    ScratchFolder m_folder;
    std::vector<std::string> m_names;
    TXHVAR m_list;
};

double fastestCall(BenchModule& module, int count)
{
    const DatedFiles files(count);
    std::vector<double> times;
    for (int round = 0; round < rounds; ++round)
        times.push_back(files.ask(module));
    return *std::min_element(times.begin(), times.end());
}

}  // namespace

Row measureReload()
{
    BenchModule module(programInPath("git"));
    const DatedFiles files(10000);
    const Samples samples = interleave(
        rounds, [&] { return files.ask(module); }, [&] { return files.askSystem(); });
    Row row = makeRow("dates of 10,000 files", "ms", median(samples.ours), median(samples.reference));
    row.aim = Aim::ratioAtMost;
    row.limit = 2.0;
    row.rounds = rounds;
    return row;
}

Row measureReloadGrowth()
{
    BenchModule module(programInPath("git"));
    const double small = fastestCall(module, 1000);
    const double middle = fastestCall(module, 10000);
    const double large = fastestCall(module, 50000);
    Row row = makeRow("date of each further file, to 50,000", "us", (large - middle) / 40, (middle - small) / 9);
    row.aim = Aim::ratioAtMost;
    row.limit = 1.2;
    row.rounds = rounds;
    return row;
}
