#pragma once

#include <functional>
#include <optional>
#include <stdexcept>
#include <string>
#include <vector>

/// A measurement that could not be made, as opposed to one that misses its aim.
class BenchError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

/// What an aim is about, and on which side of it the value must be.
enum class Aim { ratioAtMost, ratioAtLeast, oursAtMost };

/// One row of the table.
struct Row {
    std::string what;
    std::string unit;  ///< of `ours` and `reference`
    double ours = 0;
    double reference = 0;
    double ratio = 0;  ///< ours to the reference
    Aim aim = Aim::ratioAtMost;
    double limit = 0;      ///< of the ratio, or of `ours`
    bool percent = false;  ///< how the ratio is shown
    int rounds = 0;

    bool isMet() const;
};

/// A row whose ratio follows from its two figures.
Row makeRow(const std::string& what, const std::string& unit, double ours, double reference);

/// What the rounds gave, in the unit of the two functions that were measured.
struct Samples {
    std::vector<double> ours;
    std::vector<double> reference;
};

/// Calls both in turn, so that a load on the machine strikes both alike. The first round does not count.
Samples interleave(int rounds, const std::function<double()>& ours, const std::function<double()>& reference);

/// How long `work` takes, in milliseconds.
double milliseconds(const std::function<void()>& work);
/// The smallest value that at least `share` (0 to 1) of the values do not exceed.
double percentile(std::vector<double> values, double share);
double median(std::vector<double> values);

// --- The measurements ---
/// A Git status pass over `repository`, or over one that is made for it, against the same commands in a shell.
Row measureStatusPass(const std::optional<std::string>& repository);
/// A Subversion status pass over 10,000 files against the same command in a shell.
Row measureSvnPass();
/// What each further file costs a Subversion pass, from 10,000 to 50,000 against from 1,000 to 10,000.
Row measureSvnGrowth();
/// Collecting the output of a command against a pipe in a shell.
Row measureCapture();
/// The processor time that waiting for a silent child takes.
Row measureIdleCapture();
/// Stopping the status thread while its tool hangs, against ending that tool directly.
Row measureStop();
/// Asking for the dates of 10,000 files against asking the system for them in a loop.
Row measureReload();
/// What each further file's date costs, from 10,000 to 50,000 against from 1,000 to 10,000.
Row measureReloadGrowth();
/// Fetching a revision of 50 MB into the cache against a redirection in a shell.
Row measureLiveDiff();
/// The Git browser on a made history of 1,000,000 commits, or its load of `repository`.
std::vector<Row> measureBrowser(const std::optional<std::string>& repository);
/// Laying out the graph of a made history of 200,000 commits, against git's own graph and against the load.
std::vector<Row> measureBrowserGraph();
