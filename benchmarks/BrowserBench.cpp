#include "benchmarks/BenchRepository.h"
#include "benchmarks/BrowserLoad.h"
#include "benchmarks/Measurement.h"
#include "benchmarks/ScratchFolder.h"
#include "benchmarks/System.h"
#include "filewatcher/git/graph/AncestorMarks.h"
#include "filewatcher/git/graph/CommitGraph.h"
#include "filewatcher/git/graph/GraphLayout.h"
#include "txapi/txapi.h"

#include <algorithm>
#include <chrono>
#include <functional>
#include <optional>
#include <random>
#include <thread>

namespace fs = std::filesystem;

namespace {

constexpr int loadRounds = 5;
constexpr int filterRounds = 15;
constexpr int firstRowsRounds = 25;
constexpr const char* logArguments = "log --all --date=iso \"--pretty=format:%H%x00%P%x00%ct%x00%ae%x00%an%x00%s%x01\"";

std::string named(const std::string& what, const std::string& history)
{
    return what + ", " + history;
}

/// A row whose own figure is limited.
Row limited(const std::string& what, const std::string& unit, double ours, double reference, double limit, int rounds = 1)
{
    return makeRow(what, unit, ours, reference, Aim::oursAtMost, limit, rounds);
}

/// A row whose ratio is limited and shown in percent.
Row limitedShare(const std::string& what, double ours, double reference, double limit)
{
    Row row = makeRow(what, "ms", ours, reference, Aim::ratioAtMost, limit, loadRounds);
    row.percent = true;
    return row;
}

Row measureLoad(const fs::path& top, const std::string& history, std::optional<int> commits)
{
    BrowserLoad load(top);
    const std::string script = bench::gitScript(programInPath("git"), top, logArguments);
    const auto ours = [&] {
        const double time = load.wholeLoad();
        if (commits && load.count() != *commits + 1)
            throw BenchError("the browser has " + std::to_string(load.count()) + " rows");
        load.close();
        return time;
    };
    const Samples samples = interleave(loadRounds, ours, [&] { return bench::timeInShell(script); });
    return makeRow(named("browser load", history), "ms", samples, Aim::ratioAtMost, 1.05);
}

/// How much memory the loaded browser takes for each commit.
Row measureMemory(const MadeHistory& made, const std::string& history)
{
    BrowserLoad load(made.top());
    const double before = bench::residentBytes();
    load.wholeLoad();
    const double bytes = (bench::residentBytes() - before) / made.commits();
    return limited(named("memory of a commit", history), "B", bytes, 150, 150);
}

/// The time until the browser's first rows can be read, and until its timer has put them into the tree. The graph is laid out
/// some thirty rows behind the commits, so git lists that many more.
std::vector<Row> measureFirstRows(const MadeHistory& made, const std::string& history)
{
    constexpr int rows = 100;
    BrowserLoad load(made.top());
    const std::string script = bench::gitScript(programInPath("git"), made.top(), std::string(logArguments) + " --max-count=130");
    const auto measure = [&](const std::function<void()>& wait) {
        const double time = elapsedMilliseconds([&] {
            load.begin();
            wait();
        });
        load.close();
        load.module().call("filewatcher_stop_async_work", {});
        txTreeClear();
        return time;
    };
    const auto untilReadable = [&load] {
        for (GraphRow row; !load.graphRow(rows - 1, row);)
            std::this_thread::sleep_for(std::chrono::microseconds(100));
    };
    const auto untilInTree = [&load] {
        load.module().waitFor([&load] { return load.module().editor().tree().size() >= rows; }, "the first rows");
    };
    const Samples readable = interleave(
        firstRowsRounds, [&] { return measure(untilReadable); }, [&] { return bench::timeInShell(script); });
    std::vector<double> inTree;
    for (int round = 0; round < loadRounds; ++round)
        inTree.push_back(measure(untilInTree));
    return {makeRow(named("first 100 rows readable through the slots", history), "ms", readable, Aim::ratioAtMost, 1.5),
            limited(named("first 100 rows in the tree (timer: 100 ms)", history), "ms", median(inTree), 100, 200, loadRounds)};
}

/// The longest turn of the editor's event loop while the tree fills, and the longest call of a function meanwhile.
std::vector<Row> measureResponse(const MadeHistory& made, const std::string& history)
{
    BrowserLoad load(made.top());
    Editor& editor = load.module().editor();
    double longestTurn = 0;
    double longestCall = 0;
    load.begin();
    const auto size = static_cast<std::size_t>(made.commits()) + 1;
    const auto deadline = std::chrono::steady_clock::now() + std::chrono::minutes(3);
    while (editor.tree().size() < size) {
        if (std::chrono::steady_clock::now() > deadline)
            throw BenchError("the tree is not full after three minutes");
        longestTurn = std::max(longestTurn, elapsedMilliseconds([&] { editor.runUntil([] { return false; }, 0); }));
        for (const char* getter : {"_GitGetBranchInfoRunning", "_GitGettingInfo", "_GitCurBranchEndHash"})
            longestCall = std::max(longestCall, elapsedMilliseconds([&] { load.module().call(getter, {}); }));
        longestCall = std::max(longestCall, elapsedMilliseconds([&] { load.module().call("_GitGetBranchName", {0}); }));
        longestCall = std::max(longestCall, elapsedMilliseconds([&] { load.count(); }));
        std::this_thread::sleep_for(std::chrono::milliseconds(1));
    }
    return {limited(named("longest tick of the tree", history), "ms", longestTurn, 200, 210),
            limited(named("longest call during a load", history), "ms", longestCall, 10, 10)};
}

/// The longest call that closes the browser or shows another repository in the middle of a load.
Row measureInterruptions(const MadeHistory& made, const std::string& history)
{
    constexpr int rounds = 100;
    constexpr std::uint32_t latestMs = 1000;
    BrowserLoad load(made.top());
    std::mt19937 engine(5);
    double longest = 0;
    for (int round = 0; round < rounds; ++round) {
        load.begin();
        load.module().editor().runUntil([] { return false; }, static_cast<std::int32_t>(engine() % latestMs));
        const bool change = round % 2 != 0;
        longest = std::max(longest, elapsedMilliseconds([&] {
                               if (change)
                                   load.begin((made.top() / ".").string());
                               else
                                   load.close();
                           }));
        if (load.count() != 0 && !change)
            throw BenchError("a closed browser has commits");
        txTreeClear();
    }
    return limited(named("longest close or change in a load", history), "ms", longest, 300, 300, rounds);
}

/// Filtering against a search through the output of git's log in a file.
Row measureFilter(const MadeHistory& made, const std::string& history, const ScratchFolder& folder)
{
    const fs::path log = folder / "log";
    bench::runInShell(bench::gitToFileScript(programInPath("git"), made.top(), logArguments, log));
    const std::string script = bench::countScript(MadeHistory::rareWord, log);
    BrowserLoad load(made.top());
    load.wholeLoad();
    const TXHVAR tree = txHvarAlloc();
    const auto filter = [&] {
        const double time = elapsedMilliseconds([&] {
            load.module().call("_GitFilterTree", {MadeHistory::rareWord, CallArgument::variable(tree)});
        });
        if (load.module().editor().tree().size() != static_cast<std::size_t>(made.rareSubjects()))
            throw BenchError("the filter found something else");
        return time;
    };
    const Samples samples = interleave(filterRounds, filter, [&] { return bench::timeInShell(script); });
    txHvarFree(tree);
    return makeRow(named("filter for a rare word", history), "ms", samples, Aim::ratioAtMost, 0.3);
}

/// Adds the commits of a history to `store` as the browser's model does.
void fill(CommitStore& store, const MadeHistory& made)
{
    const std::string log = bench::shellOutput(bench::gitCommand(programInPath("git"), made.top(), logArguments));
    store.addWorkingCopy();
    cmROStringT batch = log;
    for (GitLogRecord record; takeGitLogRecord(batch, record);)
        store.add(record);
}

std::vector<Row> measureGraph(const MadeHistory& made, const std::string& history, double loadMs)
{
    CommitStore store;
    fill(store, made);
    const auto layOut = [&] {
        AncestorMarks marks;
        marks.markStart(store.idOf(1));
        for (std::uint32_t number = 1; number < store.count(); ++number)
            marks.onCommitAdded(store, number);
        AllCommits commits(store);
        GraphLayout layout(commits);
        layout.finish(store.count());
        if (layout.widest() < 2)
            throw BenchError("the graph is not laid out");
    };
    const std::string script = bench::gitScript(programInPath("git"), made.top(), "log --graph --all --oneline");
    const Samples samples = interleave(
        loadRounds, [&] { return elapsedMilliseconds(layOut); }, [&] { return bench::timeInShell(script); });
    const double time = median(samples.ours);
    return {limitedShare(named("graph and marks", history), time, median(samples.reference), 0.01),
            limitedShare(named("graph and marks in a load", history), time, loadMs, 0.02)};
}

void append(std::vector<Row>& rows, const std::vector<Row>& more)
{
    rows.insert(rows.end(), more.begin(), more.end());
}

}  // namespace

std::vector<Row> measureBrowser(const std::optional<std::string>& repository)
{
    if (repository) {
        const fs::path top = fs::canonical(*repository);
        return {measureLoad(top, top.filename().string(), std::nullopt)};
    }
    const ScratchFolder folder;
    const MadeHistory made(folder / "repository", 1'000'000);
    const std::string history = "1,000,000 commits";
    std::vector<Row> rows{measureMemory(made, history), measureLoad(made.top(), history, made.commits()),
                          measureFilter(made, history, folder)};
    append(rows, measureFirstRows(made, history));
    append(rows, measureResponse(made, history));
    return rows;
}

std::vector<Row> measureBrowserGraph()
{
    const ScratchFolder folder;
    const MadeHistory made(folder / "repository", 200'000);
    const std::string history = "200,000 commits";
    std::vector<Row> rows{measureLoad(made.top(), history, made.commits())};
    append(rows, measureGraph(made, history, rows.front().ours));
    rows.push_back(measureInterruptions(made, history));
    return rows;
}
