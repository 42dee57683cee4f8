#include "benchmarks/Measurement.h"
#include "benchmarks/Report.h"

#include <CLI/CLI.hpp>

#include <array>
#include <exception>
#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace {

constexpr int exitFailure = 1;
constexpr int exitUsage = 2;

struct Measurement {
    const char* name;
    std::function<std::vector<Row>()> measure;
};

/// Makes the measurements whose name holds `only`, whether or not one before fails.
int runAll(bool json, const std::string& only, const std::optional<std::string>& repository)
{
    const auto one = [](Row (*measure)()) { return [measure] { return std::vector<Row>{measure()}; }; };
    const std::array<Measurement, 11> measurements{{
        {"git browser", [&repository] { return measureBrowser(repository); }},  // first: it asks for the process's memory
        {"git graph", &measureBrowserGraph},
        {"status pass", [&repository] { return std::vector<Row>{measureStatusPass(repository)}; }},
        {"svn status pass", one(&measureSvnPass)},
        {"svn growth", one(&measureSvnGrowth)},
        {"reload dates", one(&measureReload)},
        {"reload growth", one(&measureReloadGrowth)},
        {"live diff", one(&measureLiveDiff)},
        {"capture", one(&measureCapture)},
        {"processor time", one(&measureIdleCapture)},
        {"stop", one(&measureStop)},
    }};
    const Report report(json);
    int result = 0;
    for (const Measurement& measurement : measurements) {
        if (std::string(measurement.name).find(only) == std::string::npos)
            continue;
        try {
            for (const Row& row : measurement.measure())
                report.print(row);
        } catch (const std::exception& error) {
            Report::printFailure(measurement.name, error.what());
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
    std::string only;
    std::optional<std::string> repository;
    app.add_flag("--json", json, "One JSON object a line");
    app.add_option("--only", only, "Only the measurements with this in their name")->type_name("TEXT");
    app.add_option("REPOSITORY", repository, "A Git repository for the status pass, instead of one that is made for it");
    try {
        app.parse(argc, argv);
    } catch (const CLI::ParseError& error) {
        return app.exit(error) == 0 ? 0 : exitUsage;
    }
    return runAll(json, only, repository);
}
