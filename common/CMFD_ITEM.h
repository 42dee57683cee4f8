#pragma once

#include "common/cmDateTime.h"
#include "common/cmString.h"

#include <cstdint>

inline constexpr std::uint32_t cmAttributeReadOnly = 0x01;
inline constexpr std::uint32_t cmAttributeDirectory = 0x10;

/// What a file driver found under a name.
enum class cmItemState : std::uint8_t { missing, unreadable, found };

/// A directory entry as the file drivers give it.
struct CMFD_ITEM {
    cmItemState state = cmItemState::missing;
    std::uint32_t attributes = 0;  ///< cmAttribute bits; the other fields are 0 when nothing was found
    std::int64_t size = 0;         ///< bytes
    cmUTCTime created = 0;         ///< on POSIX the last change of the entry
    cmUTCTime accessed = 0;
    cmUTCTime modified = 0;
};

/// Reads the entry of `path` on a local file system, links followed. May block for as long as the file system does. Any thread.
CMFD_ITEM cmReadFileItem(cmROStringT path);
