#include "common/cmDateTime.h"

#include <ctime>

bool cmLocalDateTime(std::int64_t unixTime, cmDateTime& local)
{
    const std::time_t seconds = unixTime;
    std::tm fields{};
    if (!localtime_r(&seconds, &fields))
        return false;
    local = {fields.tm_year + 1900, fields.tm_mon + 1, fields.tm_mday, fields.tm_hour, fields.tm_min, fields.tm_sec};
    return true;
}
