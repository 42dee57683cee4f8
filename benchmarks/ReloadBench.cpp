#include "benchmarks/BenchModule.h"
#include "benchmarks/Measurement.h"
#include "benchmarks/ScratchFolder.h"
#include "benchmarks/System.h"
#include "filewatcher/reload/FileDateSource.h"
#include "txapi/txapi.h"

namespace fs = std::filesystem;

namespace {

constexpr int rounds = 21;
constexpr int filesPerFolder = 100;
constexpr std::int32_t budgetMs = 60000;

cmThreadEvent hangEnds{true, false};

/// While it lives, reading the date of a file named "hangs" takes 60 s. Declare it behind the module, which waits for the read.
class HangingFile {
public:
    static constexpr const char* name = "hangs";

    HangingFile()
    {
        static constexpr FileDateSource source{
            &read, &cmTickCount, [](cmThreadEvent& event, std::uint32_t timeoutMs) { return event.wait(timeoutMs); }};
        hangEnds.reset();
        setFileDateSource(&source);
    }
    ~HangingFile()
    {
        setFileDateSource(nullptr);
        hangEnds.set();
    }
    HangingFile(const HangingFile&) = delete;
    HangingFile& operator=(const HangingFile&) = delete;

private:
    static CMFD_ITEM read(cmROStringT path)
    {
        constexpr std::uint32_t hangMs = 60'000;
        if (path.ends_with(name))
            hangEnds.wait(hangMs);
        return cmReadFileItem(path);
    }
};

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
            rename(i, m_names.back());
        }
    }
    ~DatedFiles() { txHvarFree(m_list); }
    DatedFiles(const DatedFiles&) = delete;
    DatedFiles& operator=(const DatedFiles&) = delete;

    /// Asks for a file that hangs in place of one in the middle.
    void letOneHang()
    {
        const std::size_t middle = m_names.size() / 2;
        m_names.erase(m_names.begin() + static_cast<std::ptrdiff_t>(middle));
        rename(static_cast<int>(middle), (m_folder / HangingFile::name).string());
    }

    /// The time of asking the system for all dates, in milliseconds. Here and in `ask` all dates are read once before the
    /// measurement, so that the system's caches are equally warm.
    double askSystem() const
    {
        bench::readDates(m_names);
        return elapsedMilliseconds([this] { bench::readDates(m_names); });
    }
    /// The time of asking the module for all dates, in milliseconds.
    double ask(BenchModule& module, std::int32_t budget = budgetMs) const
    {
        bench::readDates(m_names);
        return poll(module, budget);
    }
    double poll(BenchModule& module, std::int32_t budget) const
    {
        const TXHVAR table = txHvarAlloc();
        const double time = elapsedMilliseconds([&] {
            module.call("_GetFastReloadInfoTable", {CallArgument::variable(m_list), 0, 0, CallArgument::variable(table), budget});
        });
        for (const std::string& name : m_names) {
            if (txHvarHashElement(table, name.c_str(), 0) == 0)
                throw BenchError("no date came for " + name);
        }
        txHvarFree(table);
        return time;
    }

private:
    void rename(int index, const std::string& name) const
    {
        txHvarSetString(txHvarArrayElement(m_list, index, txCreateMissing), cmROStringT(name));
    }

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

std::vector<Row> measureReloadHang()
{
    constexpr std::int32_t budget = 500;
    constexpr double factor = 1.1;
    BenchModule module(programInPath("git"));
    const HangingFile hanging;
    const DatedFiles files(10000);
    DatedFiles filesOneHangs(10000);
    filesOneHangs.letOneHang();
    files.ask(module, budget);  // the module's own first time costs more
    const double first = filesOneHangs.ask(module, budget);
    const Samples samples = interleave(
        rounds, [&] { return filesOneHangs.ask(module, budget); }, [&] { return files.ask(module, budget); });
    const Row later = makeRow("dates of 10,000 files, one hangs, against none", "ms", samples, Aim::ratioAtMost, factor);
    const Row once = makeRow("what the first of these polls takes beyond 1.1 times", "ms", first - factor * later.reference,
                             later.reference, Aim::oursAtMost, 250, 1);
    return {later, once};
}

Row measureReloadMemory()
{
    constexpr std::int32_t budget = 2000;  // the first poll takes half of it for the file that hangs
    constexpr int fewPolls = 10;
    constexpr int manyPolls = 1000;
    constexpr double megabyte = 1e6;
    BenchModule module(programInPath("git"));
    const HangingFile hanging;
    DatedFiles files(10000);
    files.letOneHang();
    double early = 0;
    for (int count = 1; count <= manyPolls; ++count) {
        files.poll(module, budget);
        if (count == fewPolls)
            early = bench::residentBytes();
    }
    return makeRow("resident memory after 1,000 reload polls, after 10", "MB", bench::residentBytes() / megabyte,
                   early / megabyte, Aim::ratioAtMost, 1.02, 1);
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
