#pragma once

#include "common/cmDateTime.h"
#include "common/cmString.h"

// Times as text. RFC 3339: "2024-07-01T12:00:00+02:00", in the local zone with its offset at that time; where the offset has
// seconds, as some had before 1950, in UTC. Each is null when the system has no date for the time, and for a year that has no
// four digits.

/// RFC 3339 with seven digits behind the second.
cmStringT rfc3339(cmUTCTime time);
/// RFC 3339 of a local time in seconds. Of an hour that a change of the clock repeats, it is the first one.
cmStringT rfc3339(const cmDateTime& local);
/// RFC 3339 of this moment.
cmStringT rfc3339Now();

/// Reads what cmDateTimeText writes. A date of zeros for any other text.
cmDateTime parseDateTime(cmROStringT text);
