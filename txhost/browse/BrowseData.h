#pragma once

#include "common/cmArray.h"
#include "common/cmString.h"
#include "filewatcher/git/commits/GitCommitInfo.h"
#include "filewatcher/git/graph/GraphRow.h"

#include <cstdint>
#include <memory>
#include <optional>

// What the two sides of `txhost browse` tell each other through a BrowseExchange: the screen, on the terminal's thread, says what
// it wants to show; the session, on the editor's thread, says what it has. Values only. Texts are as git has them, not yet safe
// for a terminal.

/// A row of the history. Row 0 is the working copy, unless a filter leaves it out.
struct HistoryRow {
    cmStringT hash{""};  ///< empty for the working copy
    cmArray<cmStringT> parents;
    cmStringT author;
    cmStringT email;
    GitDateTime date;  ///< when it was committed
    cmStringT subject;
    cmArray<cmStringT> branches;  ///< whose tip it is
    cmArray<cmStringT> tags;
    bool isOnCurrentBranch = false;
    GraphRow graph;
};

/// Rows that follow each other in the history.
struct HistoryRows {
    std::uint32_t edition = 0;  ///< of HistoryState
    std::int32_t first = 0;     ///< the row of the first one
    cmArray<HistoryRow> rows;
};

enum class RefKind { head, branch, tag };

/// A name that can be jumped to.
struct GitRefName {
    RefKind kind;
    cmStringT name;
    cmStringT hash;
};

/// What there is of the history.
struct HistoryState {
    std::uint32_t edition = 0;        ///< another number: the rows are other ones, by a new load or filter
    std::uint32_t load = 0;           ///< BrowseWants::load that this belongs to
    cmStringT filter{""};             ///< BrowseWants::filter that the rows belong to
    bool filterFoundNothing = false;  ///< no commit has it: the rows are those from before it
    std::int32_t rowCount = 0;
    bool isLoading = true;
    std::int32_t rowsPerSecond = 0;                    ///< of the load, while it goes on
    cmStringT failure;                                 ///< why the history is not complete, in one line; null when nothing failed
    bool haveBranchesMoved = false;                    ///< since the load began: a new load would show other rows
    bool isFiltering = false;                          ///< rows with the filter's text are still being found
    std::shared_ptr<const cmArray<GitRefName>> names;  ///< the head first; null until they are read
};

/// One piece of a file's change. Its lines begin with '+', '-', ' ' or '\', of a merge with one such character for each parent.
struct DiffHunk {
    cmStringT header;  ///< "@@ -1,2 +1,3 @@"
    cmArray<cmStringT> lines;
};

/// What has happened to a file in a commit or in the working copy.
struct FileChange {
    cmStringT path;           ///< from the top level, with slashes
    cmStringT oldPath{""};    ///< of a renamed or copied file; else empty
    char kind = '?';          ///< A added, M modified, D deleted, R renamed or copied, '?' not known (yet)
    bool isStaged = false;    ///< of the working copy: the index has a change of it
    bool isUnstaged = false;  ///< of the working copy: the file differs from the index
    bool isBinary = false;
    std::int32_t added = 0;    ///< lines
    std::int32_t removed = 0;  ///< lines
    cmArray<DiffHunk> hunks;
};

/// What a commit is and has changed; or the working copy, whose changes are those from the last commit.
struct CommitDetails {
    cmStringT hash{""};  ///< empty for the working copy
    cmArray<cmStringT> parents;
    cmStringT author;
    cmStringT email;
    GitDateTime date;
    cmArray<cmStringT> message;  ///< lines
    cmArray<FileChange> files;   ///< without kinds, counts and hunks until `isComplete`
    bool isComplete = false;     ///< nothing more will come
    cmStringT failure;           ///< why something is missing, in one line; null when nothing failed
};

/// A file whose revisions are asked for.
struct FileQuestion {
    cmStringT path;          ///< from the top level, with slashes
    cmStringT revision{""};  ///< where it begins; empty: the last commit
    friend bool operator==(const FileQuestion&, const FileQuestion&) = default;
};

/// One of a file's revisions.
struct FileRevision {
    cmStringT hash;
    cmStringT author;
    GitDateTime date;
    cmStringT subject;
};

struct FileHistory {
    FileQuestion question;
    cmArray<FileRevision> revisions;  ///< the newest first
    cmStringT failure;                ///< in one line; null when nothing failed
};

/// What a search looks for.
enum class SearchKind {
    text,   ///< a row with the text in author, e-mail, subject or hash, like a filter
    hash,   ///< the commit whose hash is or begins with the text
    child,  ///< a commit that has this hash as a parent
};

/// A question for a row.
struct RowSearch {
    std::uint32_t number = 0;  ///< each search has another one
    SearchKind kind = SearchKind::text;
    cmStringT text;
    std::int32_t from = 0;   ///< the first row that is looked at
    bool backwards = false;  ///< towards row 0. At the end of the rows it goes on at their other end.
    friend bool operator==(const RowSearch&, const RowSearch&) = default;
};

struct RowFound {
    std::uint32_t number = 0;   ///< of the search
    std::int32_t row = -1;      ///< below 0: there is none, nor will one come with the load
    std::uint32_t edition = 0;  ///< of the HistoryState that the row belongs to
};

/// What the screen needs now. What it needed before and is not in here any more, need not be answered.
struct BrowseWants {
    std::uint32_t load = 1;  ///< a number that changes with each load that the user asks for
    cmStringT filter{""};    ///< only commits with this text; empty: all
    std::int32_t firstRow = 0;
    std::int32_t rowCount = 0;
    std::optional<cmStringT>
        details;  ///< hash of the commit; empty for the working copy, whose changes come anew with each change
    std::uint32_t detailsNumber = 0;  ///< another one: earlier details are not there any more, even of the same commit
    std::optional<FileQuestion> history;
    std::uint32_t historyNumber = 0;  ///< another one: earlier answers are not there any more, even to the same question
    std::optional<RowSearch> search;
    friend bool operator==(const BrowseWants&, const BrowseWants&) = default;
};

/// What the session has to tell. A part that is null or nothing has not changed since the last time.
struct BrowseNews {
    std::optional<HistoryState> state;
    std::optional<HistoryRows> rows;  ///< all wanted ones that there are, again when they have changed
    std::shared_ptr<const CommitDetails> details;
    std::shared_ptr<const FileHistory> history;
    std::optional<RowFound> found;
    cmStringT workingCopy;  ///< what the working copy's row says: "2 modified, 1 staged"
};
