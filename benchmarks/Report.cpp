#include "benchmarks/Report.h"

#include <nlohmann/json.hpp>

#include <cstdio>

namespace {

constexpr const char* line = "%-53s %15s %15s %9s %10s  %s\n";

std::string number(double value, int decimals)
{
    char text[64];
    std::snprintf(text, sizeof(text), "%.*f", decimals, value);
    return text;
}

std::string figure(double value, const std::string& unit)
{
    return number(value, value < 1 ? 3 : value < 100 ? 2 : 0) + " " + unit;
}

std::string share(double value, bool percent)
{
    return percent ? number(value * 100, 2) + " %" : number(value, 2);
}

std::string aimText(const Row& row)
{
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
    object["aimOf"] = row.aim == Aim::oursAtMost ? "ours" : "ratio";
    object["atLeast"] = row.aim == Aim::ratioAtLeast;
    object["rounds"] = row.rounds;
    object["ok"] = row.isMet();
    // The name of a repository is any bytes.
    return object.dump(-1, ' ', false, nlohmann::ordered_json::error_handler_t::replace);
}

}  // namespace

Report::Report(bool json) : m_json(json)
{
    if (!m_json)
        std::printf(line, "what", "ours", "reference", "ratio", "aim", "");
    std::fflush(stdout);
}

void Report::print(const Row& row) const
{
    if (m_json)
        std::printf("%s\n", jsonText(row).c_str());
    else
        std::printf(line, row.what.c_str(), figure(row.ours, row.unit).c_str(), figure(row.reference, row.unit).c_str(),
                    share(row.ratio, row.percent).c_str(), aimText(row).c_str(), row.isMet() ? "ok" : "MISSED");
    std::fflush(stdout);
}

void Report::printFailure(const std::string& what, const std::string& reason)
{
    std::fprintf(stderr, "filewatcher_bench: %s: %s\n", what.c_str(), reason.c_str());
}
