#include "common/CMFD_ITEM.h"
#include "common/cmStringCatHelper.h"
#include "common/cmSystemPath.h"
#include "txhost/Commands.h"
#include "txhost/Console.h"
#include "txhost/JsonText.h"

#include <array>
#include <chrono>
#include <ctime>
#include <filesystem>

namespace {

/// Local time to the millisecond; "-" for no time.
cmStringT timeText(std::int64_t time)
{
    if (time == 0)
        return "-";
    constexpr std::int64_t from1601To1970 = 116'444'736'000'000'000;
    const std::int64_t ms = (time - from1601To1970) / 10'000;
    const auto seconds = static_cast<std::time_t>(ms / 1000);
    std::array<char, 32> text{};
    std::strftime(text.data(), text.size(), "%Y-%m-%d %H:%M:%S", std::localtime(&seconds));  // one thread asks
    std::array<char, 48> whole{};
    std::snprintf(whole.data(), whole.size(), "%s.%03d", text.data(), static_cast<int>(ms % 1000));
    return whole.data();
}

void printFile(const cmStringT& path, const Json& entry, bool json)
{
    const auto time = entry.at(0).get<std::int64_t>();
    const bool readOnly = entry.at(1) != 0;
    if (json) {
        console::printLine(jsonText({{"path", jsonString(path)}, {"time", time}, {"readOnly", readOnly}}));
        return;
    }
    const cmStringT padded = cmCat(timeText(time)) + "                        ";
    console::printLine(cmStringT(cmCat(padded.view().substr(0, 23)) + (readOnly ? "  read-only  " : "             ")
                                 + console::printable(path)));
}

void printSlow(const cmStringT& path, bool json)
{
    if (json)
        console::printLine(jsonText({{"path", jsonString(path)}, {"slow", true}}));
    else
        console::printLine(cmStringT(cmCat(console::coloured(console::yellow, "slow                     ")) + "           "
                                     + console::printable(path)));
}

/// Calls a function whose last reference is a hash table to be filled; the table as JSON.
Json calledTable(Host& host, cmROStringT name, cmArray<CallArgument> arguments, TXHVAR table)
{
    if (host.call(name, arguments) != 0)
        throw HostError(std::string(name) + " failed");
    const Json filled = jsonOfVariable(*host.editor().value(table));
    return filled.is_object() ? filled : Json::object();
}

}  // namespace

int runReload(const HostOptions& options, const std::vector<std::string>& named)
{
    Host host(options);
    const TXHVAR files = txHvarAlloc();
    const TXHVAR table = txHvarAlloc();
    const TXHVAR slow = txHvarAlloc();
    for (std::size_t i = 0; i < named.size(); ++i) {
        std::error_code error;
        const std::filesystem::path path = std::filesystem::absolute(cmSystemPath(named[i]), error).lexically_normal();
        txHvarSetString(txHvarArrayElement(files, static_cast<std::int32_t>(i), txCreateMissing), cmPathText(path));
    }
    const cmArray<CallArgument> request{CallArgument::variable(files), 0, 0, CallArgument::variable(table), options.budgetMs};
    const Json dates = calledTable(host, "_GetFastReloadInfoTable", request, table);
    for (const auto& [path, entry] : dates.items())
        printFile(cmROStringT(path), entry, options.json);
    const Json slowFiles = calledTable(host, "_GetSlowReloadFiles", {CallArgument::variable(slow)}, slow);
    for (const auto& [path, one] : slowFiles.items())
        printSlow(cmROStringT(path), options.json);
    return 0;
}
