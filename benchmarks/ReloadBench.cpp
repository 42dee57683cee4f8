#include "benchmarks/BenchModule.h"
#include "benchmarks/Measurement.h"
#include "benchmarks/ScratchFolder.h"
#include "benchmarks/System.h"
#include "txapi/txapi.h"

namespace fs = std::filesystem;

namespace {

constexpr int rounds = 21;
constexpr int filesPerFolder = 100;
constexpr std::int32_t budgetMs = 60000;

/// Files on the disk, and the array of their names in the editor.
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

    /// The time of asking the system for all dates, in milliseconds. Here and in `ask` all dates are read once before the
    /// measurement, so that the system's caches are equally warm.
    double askSystem() const
    {
        bench::readDates(m_names);
        return elapsedMilliseconds([this] { bench::readDates(m_names); });
    }
    /// The time of asking the module for all dates, in milliseconds.
    double ask(BenchModule& module) const
    {
        const TXHVAR table = txHvarAlloc();
        bench::readDates(m_names);
        const double time = elapsedMilliseconds([&] {
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

}  // namespace

Row measureReload()
{
    BenchModule module(programInPath("git"));
    const DatedFiles files(10000);
    const Samples samples = interleave(
        rounds, [&] { return files.ask(module); }, [&] { return files.askSystem(); });
    return makeRow("dates of 10,000 files", "ms", samples, Aim::ratioAtMost, 2.0);
}

Row measureReloadGrowth()
{
    BenchModule module(programInPath("git"));
    const auto measure = [&module](int count) {
        const DatedFiles files(count);
        return fastest(rounds, [&] { return files.ask(module); });
    };
    return makeGrowthRow("date of each further file, to 50,000", measure, rounds);
}
