#pragma once

#include "common/cmString.h"

#include <cstdint>
#include <limits>

/// The time of a commit that has none, or none that can be read.
inline constexpr std::int64_t noCommitTime = std::numeric_limits<std::int64_t>::min();

/// One record of the log; the texts are those of the log's own bytes.
struct GitLogRecord {
    cmROStringT hash;
    cmROStringT parents;               ///< hashes with a blank between them
    std::int64_t time = noCommitTime;  ///< Unix time
    cmROStringT authorEmail;
    cmROStringT authorName;
    cmROStringT subject;  ///< all that is left
};

/// Takes the next record out of `batch`, in which each ends with the byte 1 and has its fields separated by NULs (hash,
/// parents, time, e-mail, name, subject). Records with fewer fields are passed over. False when there is none left.
bool takeGitLogRecord(cmROStringT& batch, GitLogRecord& record);
