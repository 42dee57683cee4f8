#pragma once

#include "common/cmString.h"

#include <cstdint>
#include <limits>

/// The byte that ends a commit's record in the output of the log and history commands. A name or a message may hold it, too.
inline constexpr char gitRecordEnd = '\x01';
/// What stands between two records of the log: no field of a record holds a line feed.
inline constexpr cmROStringT gitRecordSeparator = "\x01\n";

/// The time of a commit whose time is missing or unreadable.
inline constexpr std::int64_t noCommitTime = std::numeric_limits<std::int64_t>::min();

/// The Unix time that git wrote as decimal digits; noCommitTime when `digits` does not begin with a number.
std::int64_t parseCommitTime(cmROStringT digits);

/// One record of the log. Its texts point into the log output that it was read from.
struct GitLogRecord {
    cmROStringT hash;
    cmROStringT parents;               ///< hashes, separated by blanks
    std::int64_t time = noCommitTime;  ///< Unix time
    cmROStringT authorEmail;
    cmROStringT authorName;
    cmROStringT subject;  ///< the rest of the record, NULs included
};

/// Removes the first well-formed record from the front of `batch` and stores it in `record`. A record ends with
/// gitRecordSeparator, the last one with gitRecordEnd or one more separator. Its fields are separated by NULs (hash, parents,
/// time, e-mail, name, subject). Records with fewer fields are dropped. Returns false when `batch` holds no further record.
bool takeGitLogRecord(cmROStringT& batch, GitLogRecord& record);
