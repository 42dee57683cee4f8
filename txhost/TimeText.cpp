#include "txhost/TimeText.h"

#include <array>
#include <charconv>
#include <chrono>
#include <cstdio>
#include <optional>
#include <ratio>

namespace {

constexpr std::int64_t secondsPerDay = 86400;

/// The Unix time of a date in UTC.
std::int64_t unixTimeOf(const cmDateTime& date)
{
    using namespace std::chrono;
    const sys_days day{year(date.year) / month(static_cast<unsigned>(date.month))
                       / std::chrono::day(static_cast<unsigned>(date.day))};
    return day.time_since_epoch().count() * secondsPerDay + date.hour * 3600 + date.minute * 60 + date.second;
}

/// The date in UTC of a Unix time.
cmDateTime dateOf(std::int64_t unixTime)
{
    using namespace std::chrono;
    const sys_seconds time{seconds(unixTime)};
    const sys_days midnight = floor<days>(time);
    const year_month_day date(midnight);
    const hh_mm_ss clock(time - midnight);
    return {static_cast<int>(date.year()),
            static_cast<std::int32_t>(static_cast<unsigned>(date.month())),
            static_cast<std::int32_t>(static_cast<unsigned>(date.day())),
            static_cast<std::int32_t>(clock.hours().count()),
            static_cast<std::int32_t>(clock.minutes().count()),
            static_cast<std::int32_t>(clock.seconds().count())};
}

/// How many seconds the local zone is ahead of UTC at that time; nothing when the system has no date for it.
std::optional<std::int64_t> offsetAt(std::int64_t unixTime)
{
    cmDateTime local;
    if (!cmLocalDateTime(unixTime, local))
        return std::nullopt;
    return unixTimeOf(local) - unixTime;
}

cmStringT written(std::int64_t unixTime, std::int64_t offset, cmROStringT fraction)
{
    if (offset % 60 != 0)
        offset = 0;
    const cmDateTime date = dateOf(unixTime + offset);
    if (date.year < 0 || date.year > 9999)
        return {};
    const auto minutes = static_cast<int>((offset < 0 ? -offset : offset) / 60);
    std::array<char, 80> text{};
    std::snprintf(text.data(), text.size(), "%04d-%02d-%02dT%02d:%02d:%02d%.*s%c%02d:%02d", static_cast<int>(date.year),
                  static_cast<int>(date.month), static_cast<int>(date.day), static_cast<int>(date.hour),
                  static_cast<int>(date.minute), static_cast<int>(date.second), static_cast<int>(fraction.size()),
                  fraction.data(), offset < 0 ? '-' : '+', minutes / 60, minutes % 60);
    return text.data();
}

}  // namespace

cmStringT rfc3339(cmUTCTime time)
{
    const std::int64_t unixTime = cmUnixTimeOfUTCTime(time);
    const std::optional<std::int64_t> offset = offsetAt(unixTime);
    std::array<char, 16> fraction{};
    std::snprintf(fraction.data(), fraction.size(), ".%07d", static_cast<int>(time % cmUTCTimePerSecond));
    return offset ? written(unixTime, *offset, fraction.data()) : cmStringT();
}

cmStringT rfc3339(const cmDateTime& local)
{
    const std::int64_t asUTC = unixTimeOf(local);
    for (const std::int64_t days : {-1, 1}) {  // the offset changes once in these two days at most
        const std::optional<std::int64_t> offset = offsetAt(asUTC + days * secondsPerDay);
        if (offset && offsetAt(asUTC - *offset) == offset)
            return written(asUTC - *offset, *offset, {});
    }
    return {};
}

cmStringT rfc3339Now()
{
    using namespace std::chrono;
    const auto now = duration_cast<nanoseconds>(system_clock::now().time_since_epoch()).count();
    return rfc3339(cmUTCTimeOfUnixTime(now / std::nano::den, now % std::nano::den));
}

cmDateTime parseDateTime(cmROStringT text)
{
    cmDateTime date;
    const char* const end = text.data() + text.size();
    const char* at = text.data();
    for (std::int32_t* const part : {&date.year, &date.month, &date.day, &date.hour, &date.minute, &date.second}) {
        const auto [next, error] = std::from_chars(at, end, *part);
        if (error != std::errc())
            return {};
        at = next == end ? end : next + 1;
    }
    return date;
}
