#pragma once

#include <cstdint>

/// A date with its time of day, of the Gregorian calendar.
struct cmDateTime {
    std::int32_t year = 0;
    std::int32_t month = 0;  ///< from 1, as the day
    std::int32_t day = 0;
    std::int32_t hour = 0;
    std::int32_t minute = 0;
    std::int32_t second = 0;

    friend bool operator==(const cmDateTime&, const cmDateTime&) = default;
};

/// A Unix time (seconds since 1970-01-01 UTC) in the local time zone. False when the system has no date for it; `local` is
/// then left alone. Any thread.
bool cmLocalDateTime(std::int64_t unixTime, cmDateTime& local);
