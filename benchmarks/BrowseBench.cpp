#include "benchmarks/BenchModule.h"
#include "benchmarks/BenchRepository.h"
#include "benchmarks/Measurement.h"
#include "benchmarks/ScratchFolder.h"
#include "benchmarks/System.h"
#include "benchmarks/TerminalProgram.h"
#include "common/cmFile.h"
#include "common/cmPath.h"
#include "filewatcher/git/commits/ShortHash.h"

#include <chrono>
#include <optional>

namespace fs = std::filesystem;

namespace {

using Clock = std::chrono::steady_clock;

constexpr int rounds = 5;
constexpr int keys = 200;
constexpr int historyRows = TerminalProgram::height - 3;  ///< that every browser shows at least
constexpr const char* endKey = "\x1bOF";

/// A history that browsers show.
struct Shown {
    fs::path top;
    std::string name;
    std::string commits;  ///< how many there are
    std::string oldest;   ///< the short hash in the last row
};

/// What it took to show a history.
struct Figures {
    double firstScreen;  ///< milliseconds
    double end;          ///< milliseconds
    double bytes;
};

bool isFull(const TerminalProgram& program)
{
    for (int number = 0; number < historyRows; ++number) {
        if (program.row(number).empty())
            return false;
    }
    return true;
}

std::vector<std::string> ourWords()
{
    return {cmJoinPath(cmDirectoryOf(cmProgramPath()), "txhost").c_str(), "browse"};
}

Figures browseWithOurs(const Shown& history)
{
    const Clock::time_point start = Clock::now();
    TerminalProgram program(ourWords(), history.top);
    Figures figures{};
    figures.firstScreen = program.waitFor([&] { return isFull(program); }, start);
    program.type("G");
    figures.end = program.waitFor([&] { return program.shows(history.oldest); }, start);
    figures.bytes = program.peakBytes();
    return figures;
}

Figures browseWithTig(const Shown& history)
{
    const Clock::time_point start = Clock::now();
    TerminalProgram program({"tig", "--all"}, history.top);
    Figures figures{};
    figures.firstScreen = program.waitFor([&] { return isFull(program); }, start);
    program.waitFor([&] { return program.shows(" of " + history.commits) && !program.shows("loading"); }, start);
    program.type(endKey);
    figures.end = program.waitFor([&] { return program.shows("commit " + history.commits + " of"); }, start);
    figures.bytes = program.peakBytes();
    return figures;
}

Figures readGraphOfGit(const Shown& history)
{
    bench::PipedCommand git({programInPath("git"), "log", "--graph", "--all"}, history.top);
    Figures figures{};
    figures.firstScreen = git.readLines(TerminalProgram::height);
    figures.end = git.readToEnd();
    figures.bytes = git.peakBytes();
    return figures;
}

/// How long a key takes until the cursor has moved, `wanted` times. Of a history that loads, those whose key was pressed and
/// answered during the load.
std::vector<double> keyTimes(TerminalProgram& program, std::size_t wanted, bool loading)
{
    const auto isLoading = [&program] { return program.row(TerminalProgram::height - 1).find("loading") != std::string::npos; };
    std::vector<double> times;
    while (times.size() < wanted && isLoading() == loading) {
        const int from = program.reversedRow();
        const int step = times.size() % 2 == 0 ? 1 : -1;
        const Clock::time_point start = Clock::now();
        program.type(step > 0 ? "j" : "k");
        times.push_back(program.waitFor([&] { return program.reversedRow() == from + step; }, start));
    }
    return times;
}

Row measureKeys(const Shown& history)
{
    Samples samples;
    while (samples.ours.size() < keys) {
        TerminalProgram program(ourWords(), history.top);
        program.waitFor([&] { return isFull(program); }, Clock::now());
        const std::vector<double> times = keyTimes(program, keys - samples.ours.size(), true);
        samples.ours.insert(samples.ours.end(), times.begin(), times.end());
        if (times.empty())
            throw BenchError("the history is loaded before a key can be pressed");
        if (samples.ours.size() < keys)
            continue;
        program.type("G");
        program.waitFor([&] { return program.shows(history.oldest); }, Clock::now());
        program.type("g");
        program.waitFor([&] { return program.reversedRow() == 0; }, Clock::now());
        samples.reference = keyTimes(program, keys, false);
    }
    return makeRow("full screen: a key during the load, 99th percentile", "ms", percentile(samples.ours, 0.99),
                   percentile(samples.reference, 0.99), Aim::ratioAtMost, 3, keys);
}

/// Our figure beside those of two others; only the better one of these sets the aim.
void addRows(std::vector<Row>& rows, const std::string& what, const std::string& unit, std::vector<Figures> figures[3],
             double Figures::*figure, double scale, double limit)
{
    const char* const others[]{"tig", "git log --graph"};
    double medians[3];
    for (int program = 0; program < 3; ++program) {
        std::vector<double> values;
        for (const Figures& one : figures[program])
            values.push_back(one.*figure / scale);
        medians[program] = median(values);
    }
    for (int other : {0, 1}) {
        const bool isBetter = medians[1 + other] <= medians[2 - other];
        rows.push_back(makeRow("full screen: " + what + ", against " + others[other], unit, medians[0], medians[1 + other],
                               isBetter ? Aim::ratioAtMost : Aim::none, limit, rounds));
    }
}

}  // namespace

std::vector<Row> measureBrowse(const std::optional<std::string>& repository)
{
    const ScratchFolder folder;
    Shown history;
    if (repository) {
        history.top = fs::canonical(*repository);
    } else {
        history.top = MadeHistory(folder / "repository", 200'000).top();
        runGit(history.top, "reset --quiet --hard");
    }
    history.commits = runGit(history.top, "rev-list --count --all");
    const std::string hashes = runGit(history.top, "log --all --format=%H");
    history.oldest = hashes.substr(hashes.rfind('\n') + 1).substr(0, shortHashLength);

    std::vector<Figures> figures[3];
    for (int round = 0; round <= rounds; ++round) {
        const Figures taken[]{browseWithOurs(history), browseWithTig(history), readGraphOfGit(history)};
        for (int program = 0; round > 0 && program < 3; ++program)  // the first round fills the system's caches
            figures[program].push_back(taken[program]);
    }
    std::vector<Row> rows;
    addRows(rows, "first screen", "ms", figures, &Figures::firstScreen, 1, 1);
    addRows(rows, "end of the history", "ms", figures, &Figures::end, 1, 0.5);
    addRows(rows, "memory of its own process", "MB", figures, &Figures::bytes, 1e6, 0.5);
    rows.push_back(measureKeys(history));
    return rows;
}
