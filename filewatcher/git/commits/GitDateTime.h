#pragma once

#include "common/cmDateTime.h"

#include <cstdint>

/// A local date and time in the editor's packed form. First word: year in bits 0-13, month in 14-17, day in 22-26, hour in 27-31.
/// Second word: minute in bits 0-5, second in 6-11.
struct GitDateTime {
    static constexpr std::uint32_t unsetFirst = 0xF83C7FFF;
    static constexpr std::int32_t lastYear = 0x3FFE;  ///< the next number marks an unset value

    std::uint32_t first = unsetFirst;
    std::uint32_t second = 0;

    /// Returns an unset value for a time without a date and for one after lastYear.
    static GitDateTime fromUnixTime(std::int64_t unixTime)
    {
        cmDateTime local;
        return cmLocalDateTime(unixTime, local) ? pack(local) : GitDateTime();
    }

    static GitDateTime pack(const cmDateTime& local)
    {
        GitDateTime packed;
        if (local.year < 0 || local.year > lastYear)
            return packed;
        packed.first = bits(local.year) | bits(local.month) << 14 | bits(local.day) << 22 | bits(local.hour) << 27;
        packed.second = bits(local.minute) | bits(local.second) << 6;
        return packed;
    }

    bool isSet() const { return first != unsetFirst; }

    cmDateTime unpacked() const
    {
        return {field(first, 0, 14), field(first, 14, 4), field(first, 22, 5),
                field(first, 27, 5), field(second, 0, 6), field(second, 6, 6)};
    }

    /// "YYYY-MM-DD hh:mm:ss"; null when unset.
    cmStringT text() const { return isSet() ? cmDateTimeText(unpacked()) : cmStringT(); }

    friend bool operator==(const GitDateTime&, const GitDateTime&) = default;

private:
    static std::uint32_t bits(std::int32_t value) { return static_cast<std::uint32_t>(value); }
    static std::int32_t field(std::uint32_t word, int from, int width)
    {
        return static_cast<std::int32_t>(word >> from & ((1u << width) - 1));
    }
};
