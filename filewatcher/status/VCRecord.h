#pragma once

#include "common/cmString.h"
#include "txapi/txapi.h"

#include <cstdint>

// How status threads write results into the editor's version-control records. A status list holds tokens with "|" between
// them. Any thread may call these functions. Paths are absolute and have native separators.

/// Whether a status list holds `token`.
bool hasStatusToken(cmROStringT list, cmROStringT token);
/// Appends `token` to a status list that lacks it; returns whether it did.
bool addStatusToken(cmStringT& list, cmROStringT token);
/// The editor's record of a path. When the editor has none the record is empty and its state is txVCStateUnknown.
TXVCRECORD readVCRecord(const tamarin::TMString& path);
/// Adds `token` to one status list of the file's record, sets the record's tool number, and writes the record. Returns whether
/// the list lacked the token.
bool markFile(const cmStringT& path, std::int32_t tool, cmROStringT token,
              cmStringT TXVCRECORD::*list = &TXVCRECORD::localStatus);
