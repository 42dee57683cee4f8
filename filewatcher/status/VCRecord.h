#pragma once

#include "common/cmString.h"
#include "txapi/txapi.h"

#include <cstdint>

// How status threads write results into the editor's version-control records. Status lists hold tokens separated by "|",
// without one at either end.

/// Whether a status list holds `token`.
bool hasStatusToken(cmROStringT list, cmROStringT token);
/// Appends `token` to a status list that lacks it; returns whether it did.
bool addStatusToken(cmStringT& list, cmROStringT token);
/// The editor's record of a path (absolute, native separators); its state is -1 when the editor has none. Any thread.
TXVCRECORD readVCRecord(const cmStringT& path);
/// Adds `token` to one of the status lists of the file `path` (absolute, native separators) in the name of `tool`, and writes
/// the record. Returns whether the token is new there. Any thread.
bool markFile(const cmStringT& path, std::int32_t tool, cmROStringT token,
              cmStringT TXVCRECORD::*list = &TXVCRECORD::localStatus);
