#pragma once

#include "common/cmString.h"
#include "filewatcher/bridge/XMLDocument.h"
#include "txapi/txapi.h"

#include <cstdint>
#include <optional>

/// The attribute "item" of a child of an entry, as far as it matters.
enum class SVNItem : std::uint8_t {
    none,  ///< no such child
    normal,
    modified,
    other  ///< added, deleted, conflicted, ...
};

/// One "entry" element in the XML output of Subversion's status command: a file or folder.
struct SVNEntry {
    cmStringT path;  ///< in native separators
    SVNItem working = SVNItem::none;
    SVNItem repository = SVNItem::none;
    /// Whether the child "commit" has a higher revision than the entry itself. Nothing when one of them has no revision.
    std::optional<bool> isOutdated;
};

/// Reads the element `node`. For the thread that owns the document.
SVNEntry readSvnEntry(const XMLDocument& document, std::int32_t node);

// Each of these updates one status list of a file's record from its entry and returns whether the record must be written. Any
// thread.
bool applyLocalStatus(const SVNEntry& entry, TXVCRECORD& record);
/// `serverAnswered` says that the output covers newer changes in the repository, so an entry without them is up to date.
bool applyRepositoryStatus(const SVNEntry& entry, bool serverAnswered, TXVCRECORD& record);
