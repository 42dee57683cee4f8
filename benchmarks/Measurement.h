#pragma once

#include <functional>
#include <optional>
#include <stdexcept>
#include <string>
#include <vector>

/// A measurement that failed, as opposed to one that misses its aim.
class BenchError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

/// Which figure of a row is compared with its limit, and how.
enum class Aim { ratioAtMost, ratioAtLeast, oursAtMost, none };

/// One row of the table: our figure beside a reference that was measured in the same run.
struct Row {
    std::string what;  ///< what was measured
    std::string unit;  ///< of `ours` and `reference`
    double ours = 0;
    double reference = 0;
    double ratio = 0;  ///< `ours` divided by `reference`
    Aim aim = Aim::ratioAtMost;
    double limit = 0;      ///< limit of the ratio, or of `ours`
    bool percent = false;  ///< whether the ratio is shown in percent
    int rounds = 0;        ///< how often it was measured

    /// Whether the figure keeps its limit, if it has one.
    bool isMet() const;
};

/// The figures of all rounds, in the unit of the measured functions.
struct Samples {
    std::vector<double> ours;
    std::vector<double> reference;
};

/// Measures both in turn, so that other load on the machine affects both alike. A first round is not counted.
Samples interleave(int rounds, const std::function<double()>& ours, const std::function<double()>& reference);

/// A row with the ratio of its two figures.
Row makeRow(const std::string& what, const std::string& unit, double ours, double reference, Aim aim, double limit, int rounds);
/// A row with the medians of the samples.
Row makeRow(const std::string& what, const std::string& unit, const Samples& samples, Aim aim, double limit);
/// A row that compares what each further file costs from 10,000 to 50,000 files with what it costs from 1,000 to 10,000; the two
/// must be about the same. `measure` returns the time for a number of files in milliseconds.
Row makeGrowthRow(const std::string& what, const std::function<double(int files)>& measure, int rounds);

/// A row with what each further file costs from `few` to `many` files, by the fastest of the samples; `measure` returns those for
/// a number of files in milliseconds.
Row makeSlopeRow(const std::string& what, const std::function<Samples(int files)>& measure, int few, int many, double limit);

/// How long `work` takes, in milliseconds.
double elapsedMilliseconds(const std::function<void()>& work);
/// The smallest value that at least `share` (0 to 1) of the values do not exceed.
double percentile(std::vector<double> values, double share);
double median(std::vector<double> values);
/// The smallest of `rounds` measurements.
double fastest(int rounds, const std::function<double()>& measure);

// --- The measurements ---
/// A Git status pass over `repository`, or over those that are made for the measurement, against the same commands in a plain
/// shell. Empty, with a word on standard error, for a repository without a work tree.
std::vector<Row> measureStatusPass(const std::optional<std::string>& repository);
/// What each further tracked file costs in a Git status pass to 30,000 or, when `large`, to 200,000 files, against `status -uno`.
Row measureStatusGrowth(bool large);
/// A Subversion status pass over 10,000 files against the same command in a shell.
Row measureSvnPass();
/// What each further file costs in a Subversion pass, against the same command in a shell.
Row measureSvnGrowth();
/// Adding the 10,000th path to a queue against adding the 100th.
Row measureQueue();
/// A status pass over each of 50 small Git repositories against a shell loop over the same commands.
Row measureManyRepositories();
/// Capturing the output of a command against a pipe in a shell.
Row measureCapture();
/// The processor time of waiting for a silent child, against the elapsed time.
Row measureIdleCapture();
/// Stopping the status thread while its tool hangs, against killing that tool directly.
Row measureStop();
/// Asking the module for the dates of 10,000 files against asking the system for them in a loop.
Row measureReload();
/// The same with a file whose date takes 60 s to read, against without it: each poll but the first, and the first.
std::vector<Row> measureReloadHang();
/// The memory of this process after 1,000 polls of 10,000 files, one of which hangs, against after 10.
Row measureReloadMemory();
/// What the date of each further file costs, see makeGrowthRow.
Row measureReloadGrowth();
/// Fetching a revision of 50 MB into the cache against redirecting it into a file in a shell.
Row measureLiveDiff();
/// The Git browser on a generated history of 1,000,000 commits; with `repository` only its load of that repository.
std::vector<Row> measureBrowser(const std::optional<std::string>& repository);
/// What the picture of the graph shows of a made history with many branches, or of `repository`.
std::vector<Row> measurePicture(const std::optional<std::string>& repository);
/// Laying out the graph of a generated history of 200,000 commits, against git's own graph and against the load.
std::vector<Row> measureBrowserGraph();
/// The full-screen browser on a generated history of 200,000 commits, or on `repository`, beside tig and git's own graph.
std::vector<Row> measureBrowse(const std::optional<std::string>& repository);
