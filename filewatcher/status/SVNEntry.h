#pragma once

#include "common/cmString.h"
#include "filewatcher/bridge/XMLDocument.h"
#include "txapi/txapi.h"

#include <cstdint>

/// One "entry" element in the XML output of Subversion's status command: a file or folder.
struct SVNEntry {
    cmStringT path;                    ///< in native separators
    bool hasWorkingStatus = false;     ///< whether there is a child "wc-status"
    cmStringT workingItem;             ///< attribute "item" of "wc-status"
    bool hasRepositoryStatus = false;  ///< whether there is a child "repos-status"
    cmStringT repositoryItem;          ///< attribute "item" of "repos-status"
    bool hasRevisions = false;         ///< whether both of the following are there
    cmStringT revision;                ///< attribute "revision" of the entry itself
    cmStringT commitRevision;          ///< attribute "revision" of the child "commit"
};

/// Reads the element `node` into `entry`, whose memory it reuses. For the thread that owns the document.
void readSvnEntry(const XMLDocument& document, std::int32_t node, SVNEntry& entry);

// Each of these updates one status list of a file's record from its entry and returns whether the record must be written. Any
// thread.
bool applyLocalStatus(const SVNEntry& entry, TXVCRECORD& record);
/// `serverAnswered` says that the output covers newer changes in the repository, so an entry without them is up to date.
bool applyRepositoryStatus(const SVNEntry& entry, bool serverAnswered, TXVCRECORD& record);
