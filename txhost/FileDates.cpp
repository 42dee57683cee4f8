#include "txhost/FileDates.h"

#include "common/cmStringCatHelper.h"
#include "common/cmSystemPath.h"
#include "txapi/txapi.h"
#include "txhost/CallVariable.h"
#include "txhost/Console.h"
#include "txhost/JsonText.h"

#include <array>
#include <cstdio>
#include <filesystem>
#include <system_error>

namespace {

/// The content of a hash table that a function has filled.
Json filledTable(Host& host, const CallVariable& table)
{
    VariableJson filled(*host.editor().value(table.handle()));
    return (*filled).is_object() ? *filled : Json::object();
}

}  // namespace

FileDates askFileDates(Host& host, const cmArray<cmStringT>& paths, std::int32_t budgetMs)
{
    const CallVariable files;
    const CallVariable table;
    const CallVariable slow;
    for (std::size_t i = 0; i < paths.size(); ++i)
        txHvarSetString(txHvarArrayElement(files.handle(), static_cast<std::int32_t>(i), txCreateMissing), paths[i]);
    if (host.call("_GetFastReloadInfoTable", {files.argument(), 0, 0, table.argument(), budgetMs}) != 0
        || host.call("_GetSlowReloadFiles", {slow.argument()}) != 0)
        throw HostError("the module has no memory or no thread for file dates");
    FileDates dates;
    const Json known = filledTable(host, table);
    for (const auto& [path, entry] : known.items())
        dates.known[cmROStringT(path)] = {entry.at(0).get<cmUTCTime>(), entry.at(1) != 0};
    const Json slowFiles = filledTable(host, slow);
    for (const auto& [path, one] : slowFiles.items())
        dates.slow.emplace(cmROStringT(path));
    return dates;
}

cmArray<cmStringT> absolutePaths(const std::vector<std::string>& named)
{
    cmArray<cmStringT> paths;
    for (const std::string& name : named) {
        if (name.empty())
            throw UsageError("an empty name is no file");
        std::error_code error;
        const std::filesystem::path absolute = std::filesystem::absolute(cmSystemPath(name), error);
        if (error)  // the current directory was removed
            throw HostError(name, error.message());
        paths.push_back(cmPathText(absolute.lexically_normal()));
    }
    return paths;
}

cmStringT fileTimeText(cmUTCTime time)
{
    if (time == 0)
        return "-";
    cmDateTime local;
    if (!cmLocalDateTime(cmUnixTimeOfUTCTime(time), local)) {
        console::noteMissingDate();
        return "-";
    }
    constexpr cmUTCTime perMillisecond = cmUTCTimePerSecond / 1000;
    std::array<char, 8> milliseconds{};
    std::snprintf(milliseconds.data(), milliseconds.size(), ".%03d", static_cast<int>(time / perMillisecond % 1000));
    return cmCat(cmDateTimeText(local)) + milliseconds.data();
}
