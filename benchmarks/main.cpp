#include "benchmarks/Measurement.h"

#include <CLI/CLI.hpp>
#include <nlohmann/json.hpp>

#include <cmath>
#include <cstdio>
#include <exception>
#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace {

constexpr int exitFailure = 1;
constexpr int exitUsage = 2;

constexpr const char* line = "%-53s %15s %15s %9s %10s  %s\n";

std::string number(double value, int decimals)
{
    char text[64];
    std::snprintf(text, sizeof(text), "%.*f", decimals, value);
    return text;
}

std::string figure(double value, const std::string& unit)
{
    if (unit.empty())  // a count
        return number(value, value == std::floor(value) ? 0 : 2);
    return number(value, value < 1 ? 3 : value < 100 ? 2 : 0) + " " + unit;
}

std::string share(double value, bool percent)
{
    return percent ? number(value * 100, 2) + " %" : number(value, 2);
}

std::string aimText(const Row& row)
{
    if (row.aim == Aim::none)
        return "";
    if (row.aim == Aim::oursAtMost)
        return "<= " + number(row.limit, 0) + " " + row.unit;
    return (row.aim == Aim::ratioAtMost ? "<= " : ">= ") + share(row.limit, row.percent);
}

std::string jsonText(const Row& row)
{
    nlohmann::ordered_json object;
    object["what"] = row.what;
    object["ours"] = row.ours;
    object["reference"] = row.reference;
    object["unit"] = row.unit;
    object["ratio"] = row.ratio;
    object["aim"] = row.limit;
    object["aimOf"] = row.aim == Aim::none ? "none" : row.aim == Aim::oursAtMost ? "ours" : "ratio";
    object["atLeast"] = row.aim == Aim::ratioAtLeast;
    object["rounds"] = row.rounds;
    object["ok"] = row.isMet();
    // The name of a repository may be no UTF-8; such bytes are replaced.
    return object.dump(-1, ' ', false, nlohmann::ordered_json::error_handler_t::replace);
}

/// Prints the rows as they come, as a table or as one JSON object a line.
class Report {
public:
    explicit Report(bool json) : m_json(json)
    {
        if (!m_json)
            std::printf(line, "what", "ours", "reference", "ratio", "aim", "");
        std::fflush(stdout);
    }

    void print(const Row& row) const
    {
        if (m_json)
            std::printf("%s\n", jsonText(row).c_str());
        else
            std::printf(line, row.what.c_str(), figure(row.ours, row.unit).c_str(), figure(row.reference, row.unit).c_str(),
                        share(row.ratio, row.percent).c_str(), aimText(row).c_str(),
                        row.aim == Aim::none ? ""
                        : row.isMet()        ? "ok"
                                             : "MISSED");
        std::fflush(stdout);
    }

private:
    bool m_json;
};

struct Measurement {
    const char* name;
    std::function<std::vector<Row>()> measure;
};

/// Makes all measurements whose name contains `only`; a failure does not keep the others from being made. Returns the exit code.
int runAll(bool json, bool large, const std::string& only, const std::optional<std::string>& repository)
{
    const auto one = [](Row (*measure)()) { return [measure] { return std::vector<Row>{measure()}; }; };
    const Measurement measurements[]{
        {"git browser",
         [&repository] { return measureBrowser(repository); }},  // first, because it measures the memory of this process
        {"git graph", &measureBrowserGraph},
        {"git picture", [&repository] { return measurePicture(repository); }},
        {"full screen", [&repository] { return measureBrowse(repository); }},
        {"status pass", [&repository] { return measureStatusPass(repository); }},
        {"status growth", [large] { return std::vector<Row>{measureStatusGrowth(large)}; }},
        {"queue", one(&measureQueue)},
        {"many repositories", one(&measureManyRepositories)},
        {"svn status pass", one(&measureSvnPass)},
        {"svn growth", one(&measureSvnGrowth)},
        {"reload dates", one(&measureReload)},
        {"reload hang", &measureReloadHang},
        {"reload memory", one(&measureReloadMemory)},
        {"reload growth", one(&measureReloadGrowth)},
        {"live diff", one(&measureLiveDiff)},
        {"capture", one(&measureCapture)},
        {"processor time", one(&measureIdleCapture)},
        {"stop", one(&measureStop)},
    };
    const Report report(json);
    int result = 0;
    for (const Measurement& measurement : measurements) {
        if (std::string(measurement.name).find(only) == std::string::npos)
            continue;
        try {
            for (const Row& row : measurement.measure())
                report.print(row);
        } catch (const std::exception& error) {
            std::fprintf(stderr, "filewatcher_bench: %s: %s\n", measurement.name, error.what());
            result = exitFailure;
        }
    }
    return result;
}

}  // namespace

int main(int argc, char** argv)
{
    CLI::App app{"Measures the filewatcher module against plain commands", "filewatcher_bench"};
    bool json = false;
    bool large = false;
    std::string only;
    std::optional<std::string> repository;
    app.add_flag("--json", json, "One JSON object a line");
    app.add_flag("--large", large, "The growth of the status pass up to 200,000 files, not 30,000");
    app.add_option("--only", only, "Only the measurements with this in their name")->type_name("TEXT");
    app.add_option("REPOSITORY", repository,
                   "A Git repository for the browser and the status pass, instead of those that are made for them");
    try {
        app.parse(argc, argv);
    } catch (const CLI::ParseError& error) {
        return app.exit(error) == 0 ? 0 : exitUsage;
    }
    return runAll(json, large, only, repository);
}
