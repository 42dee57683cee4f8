#include "common/cmDateTime.h"

#include <windows.h>

bool cmLocalDateTime(std::int64_t unixTime, cmDateTime& local)
{
    constexpr std::int64_t latest = 910'000'000'000;  // Windows file times end soon after this second
    if (unixTime < -cmSecondsFrom1601To1970 || unixTime > latest)
        return false;
    const auto ticks = static_cast<std::uint64_t>(cmUTCTimeOfUnixTime(unixTime));
    const FILETIME time{static_cast<DWORD>(ticks), static_cast<DWORD>(ticks >> 32)};
    SYSTEMTIME universal;
    SYSTEMTIME fields;
    if (!FileTimeToSystemTime(&time, &universal) || !SystemTimeToTzSpecificLocalTime(nullptr, &universal, &fields))
        return false;
    local = {fields.wYear, fields.wMonth, fields.wDay, fields.wHour, fields.wMinute, fields.wSecond};
    return true;
}
