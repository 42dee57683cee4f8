// How the graph of a history looks: what a reader of its picture cannot see, and how wide it is.

#include "benchmarks/BenchRepository.h"
#include "benchmarks/BrowserLoad.h"
#include "benchmarks/BusyHistory.h"
#include "benchmarks/Measurement.h"
#include "benchmarks/ScratchFolder.h"
#include "benchmarks/System.h"
#include "txhost/GraphText.h"

#include <algorithm>
#include <cstdint>
#include <numeric>
#include <sstream>
#include <string_view>
#include <unordered_map>

namespace fs = std::filesystem;

namespace {

constexpr std::size_t terminalWidth = 80;
constexpr std::size_t fewColumns = 15;
constexpr std::size_t noRow = SIZE_MAX;
constexpr std::int64_t newest = INT64_MAX;

/// One row of a loaded history.
struct PictureRow {
    std::vector<std::size_t> parents;  ///< their rows
    std::int64_t time = newest;        ///< unix time
    std::vector<std::size_t> stubs;    ///< rows of the parents without a line
    std::size_t columns = 0;
    bool hidden = false;  ///< whether the commit is not in the picture
};

std::size_t columnsOf(const GraphRow& row)
{
    std::size_t last = row.column;
    for (const GraphEdge& edge : row.edges)
        last = std::max<std::size_t>({last, edge.from, edge.to});
    return last + 1;
}

bool showsCommit(std::string_view picture)
{
    for (const char* dot : {"\u25CF", "\u25CB", "\u25CD"}) {
        if (picture.find(dot) != std::string_view::npos)
            return true;
    }
    return false;
}

/// The unix times of all commits by hash. The editor's dates are local ones, which are set back when daylight saving time ends.
std::unordered_map<std::string, std::int64_t> readTimes(const fs::path& top)
{
    std::unordered_map<std::string, std::int64_t> times;
    std::istringstream log(runGit(top, "log --all \"--format=%H %ct\""));
    std::string hash;
    std::int64_t time = 0;
    while (log >> hash >> time)
        times.emplace(hash, time);
    return times;
}

/// The rows of a loaded history from the top, as the editor reads them.
std::vector<PictureRow> readRows(BrowserLoad& load, const fs::path& top)
{
    const std::unordered_map<std::string, std::int64_t> times = readTimes(top);
    std::vector<PictureRow> rows;
    std::unordered_map<std::string, std::size_t> rowOf;
    std::vector<std::vector<std::string>> parents;
    GraphWindow window(terminalWidth);
    const auto rowOfHash = [&rowOf](const std::string& hash) {
        const auto found = rowOf.find(hash);
        return found == rowOf.end() ? noRow : found->second;
    };
    std::vector<std::vector<std::string>> stubs;
    GitCommitInfo info;
    GraphRow graph;
    for (std::int64_t number = 0; number < load.count(); ++number) {
        if (!load.commit(number, info) || !load.graphRow(number, graph) || info.row != number)
            throw BenchError("commit " + std::to_string(number) + " has no row");
        PictureRow& row = rows.emplace_back();
        row.columns = columnsOf(graph);
        row.hidden = !showsCommit(graphText(graph, window.next(graph)).view());
        if (number != 0)
            row.time = times.at(info.hash.c_str());
        rowOf.emplace(info.hash.c_str(), number);
        std::vector<std::string>& of = parents.emplace_back();
        if (!info.firstParent.isEmpty())
            of.emplace_back(info.firstParent.c_str());
        for (const cmStringT& parent : info.otherParents)
            of.emplace_back(parent.c_str());
        std::vector<std::string>& without = stubs.emplace_back();
        for (const GraphEdge& edge : graph.edges) {
            if (edge.kind == GraphEdgeKind::stub)
                without.emplace_back(edge.otherHash.c_str());
        }
    }
    for (std::size_t row = 0; row < rows.size(); ++row) {
        for (const std::string& parent : parents[row]) {
            if (rowOfHash(parent) != noRow)
                rows[row].parents.push_back(rowOfHash(parent));
        }
        for (const std::string& parent : stubs[row])
            rows[row].stubs.push_back(rowOfHash(parent));
    }
    return rows;
}

/// How many parents without a line no wrong clock explains. A clock was wrong when the child or one of its descendants is older
/// than the parent, or when a commit between the two is listed below one that is older.
int unexplainedStubs(const std::vector<PictureRow>& rows)
{
    std::vector<std::int64_t> oldest;  // by row: the time of the oldest among the commit and its descendants
    for (const PictureRow& row : rows)
        oldest.push_back(row.time);
    std::vector<std::size_t> work(rows.size());
    std::iota(work.rbegin(), work.rend(), 0);
    while (!work.empty()) {
        const std::size_t row = work.back();
        work.pop_back();
        for (const std::size_t parent : rows[row].parents) {
            if (oldest[parent] <= oldest[row])
                continue;
            oldest[parent] = oldest[row];
            if (parent < row)  // it was looked at before
                work.push_back(parent);
        }
    }
    std::vector<int> wrongAbove{0};  // by row: how many commits down to it are listed below an older one
    for (std::size_t row = 1; row < rows.size(); ++row)
        wrongAbove.push_back(wrongAbove.back() + (row > 1 && rows[row].time > rows[row - 1].time));
    int count = 0;
    for (std::size_t row = 0; row < rows.size(); ++row)
        count += static_cast<int>(std::count_if(rows[row].stubs.begin(), rows[row].stubs.end(), [&](std::size_t parent) {
            return parent == noRow || parent > row || (oldest[row] >= rows[parent].time && wrongAbove[row] == wrongAbove[parent]);
        }));
    return count;
}

std::vector<Row> measure(const fs::path& top, const std::string& history)
{
    BrowserLoad load(top);
    load.wholeLoad();
    const std::vector<PictureRow> rows = readRows(load, top);
    if (rows.empty())
        throw BenchError(history + " has no commits");
    double edges = 0;
    double stubs = 0;
    double hidden = 0;
    double narrow = 0;
    std::vector<double> columns;
    for (const PictureRow& row : rows) {
        edges += static_cast<double>(row.parents.size());
        stubs += static_cast<double>(row.stubs.size());
        hidden += row.hidden;
        narrow += row.columns <= fewColumns;
        columns.push_back(static_cast<double>(row.columns));
    }
    const auto count = static_cast<double>(rows.size());
    const double mean = std::accumulate(columns.begin(), columns.end(), 0.0) / count;
    const auto percent = [&history](const std::string& what, double ours, double all, Aim aim, double limit) {
        Row row = makeRow(what + ", " + history, "", ours, all, aim, limit, 1);
        row.percent = true;
        return row;
    };
    return {percent("parents without a line", stubs, edges, Aim::ratioAtMost, 0.001),
            percent("of them without a wrong clock", unexplainedStubs(rows), stubs, Aim::oursAtMost, 0),
            percent("hidden commits at 80 columns", hidden, count, Aim::oursAtMost, 0),
            percent("rows of at most 15 columns", narrow, count, Aim::ratioAtLeast, 0.99),
            makeRow("columns: mean, 99th percentile, " + history, "", mean, percentile(columns, 0.99), Aim::none, 0, 1)};
}

}  // namespace

std::vector<Row> measurePicture(const std::optional<std::string>& repository)
{
    if (repository) {
        const fs::path top = fs::canonical(*repository);
        return measure(top, top.filename().string());
    }
    const ScratchFolder folder;
    const fs::path top = folder / "repository";
    makeRepository(top);
    importHistory(top, busyHistory(50'000));
    return measure(top, "busy history");
}
