#include "benchmarks/Measurement.h"
#include "benchmarks/Report.h"

#include <CLI/CLI.hpp>

#include <array>
#include <exception>
#include <functional>
#include <optional>
#include <string>

namespace {

constexpr int exitFailure = 1;
constexpr int exitUsage = 2;

struct Measurement {
    const char* name;
    std::function<Row()> measure;
};

/// Makes the measurements whose name holds `only`, whether or not one before fails.
int runAll(bool json, const std::string& only, const std::optional<std::string>& repository)
{
    const std::array<Measurement, 9> measurements{{
        {"status pass", [&repository] { return measureStatusPass(repository); }},
        {"svn status pass", &measureSvnPass},
        {"svn growth", &measureSvnGrowth},
        {"reload dates", &measureReload},
        {"reload growth", &measureReloadGrowth},
        {"live diff", &measureLiveDiff},
        {"capture", &measureCapture},
        {"processor time", &measureIdleCapture},
        {"stop", &measureStop},
    }};
    const Report report(json);
    int result = 0;
    for (const Measurement& measurement : measurements) {
        if (std::string(measurement.name).find(only) == std::string::npos)
            continue;
        try {
            report.print(measurement.measure());
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
