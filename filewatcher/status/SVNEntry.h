#pragma once

#include "common/cmString.h"
#include "filewatcher/bridge/XMLDocument.h"
#include "txapi/txapi.h"

#include <cstdint>

/// One "entry" element in the XML output of Subversion's status command: a file or folder.
struct SVNEntry {
    cmStringT path;                 ///< in native separators
    bool hasWorkingStatus = false;  ///< whether there is a child "wc-status"
    cmStringT workingItem;          ///< attribute "item" of "wc-status"
    cmStringT repositoryItem;       ///< attribute "item" of the child "repos-status"; null when there is none
    cmStringT revision;             ///< attribute "revision" of the entry itself; null when there is none
    cmStringT commitRevision;       ///< attribute "revision" of the child "commit"; null when there is none
};

/// Reads the element `node`. For the thread that owns the document.
SVNEntry readSvnEntry(const XMLDocument& document, std::int32_t node);

// Each of these updates one status list of a file's record from its entry and returns whether the record must be written. Any
// thread.
bool applyLocalStatus(const SVNEntry& entry, TXVCRECORD& record);
/// `serverAnswered` says that the output covers newer changes in the repository, so an entry without them is up to date.
bool applyRepositoryStatus(const SVNEntry& entry, bool serverAnswered, TXVCRECORD& record);
