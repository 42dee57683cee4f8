#pragma once

#include "common/cmString.h"
#include "filewatcher/bridge/XMLDocument.h"
#include "txapi/txapi.h"

#include <cstdint>

/// One file or folder in the XML output of Subversion's status command.
struct SVNEntry {
    cmStringT path;                 ///< in native separators
    bool hasWorkingStatus = false;  ///< it has a "wc-status"
    cmStringT workingItem;          ///< that one's "item"
    cmStringT repositoryItem;       ///< the "item" of its "repos-status"; null when it has none
    cmStringT revision;             ///< its own "revision"; null when it has none, as the next
    cmStringT commitRevision;       ///< the "revision" of its own "commit"
};

SVNEntry readSvnEntry(const XMLDocument& document, std::int32_t node);

/// Lets the record of the entry's file say what the entry tells. `serverAnswered`: the output tells what the repository has that
/// is newer. Returns whether the record is to be written; one that the entry does not speak of stays as it is.
bool applySvnEntry(const SVNEntry& entry, bool serverAnswered, TXVCRECORD& record);
