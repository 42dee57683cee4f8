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
    std::uint32_t attributes = 0;  ///< cmAttribute bits; this and the following fields are 0 unless an entry was found
    std::int64_t size = 0;         ///< bytes
    cmUTCTime created = 0;         ///< on POSIX the last status change
    cmUTCTime accessed = 0;
    cmUTCTime modified = 0;
};

// Calls into the file system. Any thread may call; each call blocks for as long as the file system does.

/// Reads the entry of `path`; of a link, that of what it leads to.
CMFD_ITEM cmReadFileItem(cmROStringT path);
/// The absolute path with all symbolic links resolved; null when it does not exist.
cmStringT cmRealPath(cmROStringT path);
/// Whether `path` is an existing directory; false also for text that cannot be a path.
bool cmIsDirectory(cmROStringT path);
/// Creates the folder `relative` below `root`, and all missing folders on the way, writable by their owner only. Returns false
/// when it cannot be created or when a link leads out of `root`: nothing is created outside `root`.
bool cmMakeFolderBelow(cmROStringT root, cmROStringT relative);
/// Removes a folder with all its content, read-only files included. Returns false when anything is left.
bool cmRemoveFolder(cmROStringT path);
/// Renames the file `from` to `path`, in place of a file of that name; a reader of `path` sees the old file or the new one.
/// Returns false on failure. Afterwards `from` may name the old file; the caller removes it.
bool cmReplaceFile(cmROStringT from, cmROStringT path);
/// The absolute path of the running program's file.
cmStringT cmProgramPath();
/// The current directory of the process; null when it was removed.
cmStringT cmCurrentDirectory();
