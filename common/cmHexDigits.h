#pragma once

#include "common/cmString.h"

/// The hexadecimal digits in lower case, each at the index of its value.
inline constexpr cmROStringT cmHexDigits = "0123456789abcdef";

/// The value of a hexadecimal digit in either case; -1 for any other character.
constexpr int cmHexDigitValue(char c)
{
    if (c >= '0' && c <= '9')
        return c - '0';
    if (c >= 'a' && c <= 'f')
        return c - 'a' + 10;
    return c >= 'A' && c <= 'F' ? c - 'A' + 10 : -1;
}
