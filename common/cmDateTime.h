#pragma once

#include "common/cmString.h"

#include <chrono>
#include <cstdint>

/// A date with its time of day in the Gregorian calendar.
struct cmDateTime {
    std::int32_t year = 0;
    std::int32_t month = 0;  ///< 1 to 12
    std::int32_t day = 0;    ///< 1 to 31
    std::int32_t hour = 0;
    std::int32_t minute = 0;
    std::int32_t second = 0;

    friend bool operator==(const cmDateTime&, const cmDateTime&) = default;
};

/// Converts a Unix time (seconds since 1970-01-01 UTC) to the local time zone. Returns false when the system has no date for
/// it; then `local` is unchanged. Any thread.
bool cmLocalDateTime(std::int64_t unixTime, cmDateTime& local);

/// The date as "YYYY-MM-DD hh:mm:ss". Any thread.
cmStringT cmDateTimeText(const cmDateTime& date);

/// A point in time in units of 100 ns since 1601-01-01 UTC; 0 for none.
using cmUTCTime = std::int64_t;

inline constexpr std::int64_t cmUTCTimePerSecond = 10'000'000;
inline constexpr std::int64_t cmSecondsFrom1601To1970 = 11'644'473'600;

constexpr cmUTCTime cmUTCTimeOfUnixTime(std::int64_t seconds, std::int64_t nanoseconds = 0)
{
    return (seconds + cmSecondsFrom1601To1970) * cmUTCTimePerSecond + nanoseconds / 100;
}

/// The whole seconds of `time`, which must not be negative, as a Unix time.
constexpr std::int64_t cmUnixTimeOfUTCTime(cmUTCTime time)
{
    return time / cmUTCTimePerSecond - cmSecondsFrom1601To1970;
}

/// Milliseconds of a monotonic clock; the value wraps around after 49 days. Any thread.
inline std::uint32_t cmTickCount()
{
    const auto now = std::chrono::steady_clock::now().time_since_epoch();
    return static_cast<std::uint32_t>(std::chrono::duration_cast<std::chrono::milliseconds>(now).count());
}
