#pragma once

#include "common/cmString.h"

#include <cstddef>

/// How many digits of a hash are shown, and are enough to look a commit up.
inline constexpr std::size_t shortHashLength = 7;

/// A view of the first digits of `hash`.
inline cmROStringT shortHash(cmROStringT hash)
{
    return hash.substr(0, shortHashLength);
}
