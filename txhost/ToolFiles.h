#pragma once

#include "common/cmArray.h"
#include "common/cmDictionary.h"
#include "txapi/txapi.h"
#include "txhost/WorkingCopy.h"

#include <set>
#include <unordered_set>

/// The status of a file as the module reported it.
struct FileStatus {
    cmStringT path;
    cmROStringT tool;               ///< the tool's name
    cmArray<cmStringT> local;       ///< tokens of the local status
    cmArray<cmStringT> repository;  ///< tokens of the repository status; always empty without --updates
    /// Whether there is nothing to tell about the file.
    bool isClean() const { return local.empty() && repository.empty(); }
    bool operator==(const FileStatus&) const = default;
};

/// Files by cmFileNameKey of their paths.
using FileStatuses = cmSortedDictionary<cmStringT, FileStatus>;

/// The files of one tool: what was reported of them, and which changes were not. Each change is taken once.
class ToolFiles {
public:
    explicit ToolFiles(const Tool& tool) : m_tool(tool) {}

    /// Whether the module only adds to a file's status, so that its record is removed before it is asked again. It sets and
    /// clears that of Subversion.
    bool areAddedToOnly() const { return m_tool.number != svnTool.number; }
    /// A round begins. With areAddedToOnly a file that it does not report again has no status any more.
    void beginRound();
    /// A record of the tool has changed. Its repository status counts with `updates`.
    void change(const cmStringT& path, const TXVCRECORD& record, bool updates);
    /// The pass over a directory has ended.
    void endPass(const cmStringT& directory, bool hasFailed);

    /// The changes of `directory` itself and of what is below it. Of other files a pass that runs now may have written a part of
    /// the status only.
    FileStatuses takeBelow(const cmStringT& directory);
    /// The other changes.
    FileStatuses takeOthers();
    /// After the last pass of a round and takeOthers: the files that have no status any more. Where passes have failed, only
    /// those below a directory whose pass has succeeded; the others keep theirs.
    FileStatuses takeGone();

private:
    void take(FileStatuses::node_type file, FileStatuses& taken);
    bool isUnknown(cmROStringT key) const;

    const Tool& m_tool;
    FileStatuses m_known;                        ///< what was taken and is not clean
    FileStatuses m_changed;                      ///< what the module has changed since
    std::set<cmStringT> m_unconfirmed;           ///< keys of known files that the round has not reported
    std::unordered_set<cmStringT> m_successful;  ///< keys of directories whose passes have succeeded in the round
    bool m_hasFailed = false;                    ///< a pass of the round has failed
};
