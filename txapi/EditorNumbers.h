#pragma once

#include <cstdint>

// The numbers by which the editor and its modules know things that have no name of their own.

// --- Kinds of names: txFindName -------------------------------------------------------------------------------

inline constexpr std::int32_t txKindFunction = 1;  ///< a macro function
inline constexpr std::int32_t txKindVariable = 4;  ///< a variable, settings included

// --- Variables ------------------------------------------------------------------------------------------------

inline constexpr std::int32_t txLastResult = 1;        ///< handle of the variable that holds txCallFunction's last result
inline constexpr std::int32_t txCreateMissing = -1;    ///< array and hash services: create an element that does not exist
inline constexpr std::int32_t txDirectoryPrivate = 0;  ///< txDirectory: the folder for the editor's private data

// --- Properties: txProperty and its siblings --------------------------------------------------------------------

inline constexpr std::int32_t txPropertyLiveDiffReset = 2;     ///< integer; while not 0, a live-diff query forgets its file
inline constexpr std::int32_t txPropertyWatchContext = 4;      ///< string; copied into a watch entry when its path is added
inline constexpr std::int32_t txPropertyWatchContextFlag = 5;  ///< integer; not 0 sets the entry's context flag
inline constexpr std::int32_t txPropertyLiveDiffPermission =
    6;  ///< a variable that cannot be read as a flag forbids background fetches
inline constexpr std::int32_t txPropertyBrowserWindow = 103;      ///< integer; the window whose tree the tree services change
inline constexpr std::int32_t txPropertyBrowserRepository = 152;  ///< string; the repository that the browser shows

// --- Callback slots: txSetCallback. Their types: docs/embedding.md. -----------------------------------------------

inline constexpr std::int32_t txSlotGitModel = 47;       ///< the browser's model
inline constexpr std::int32_t txSlotGitRefresh = 48;     ///< asks for a refresh of the tree
inline constexpr std::int32_t txSlotGitCount = 49;       ///< how many commits can be read
inline constexpr std::int32_t txSlotGitCommit = 50;      ///< copies a commit
inline constexpr std::int32_t txSlotGitPaths = 51;       ///< the repository and the git executable
inline constexpr std::int32_t txSlotGitGraphRow = 52;    ///< copies a row of the graph
inline constexpr std::int32_t txSlotGitGraphWidth = 54;  ///< the number of columns of the widest row
inline constexpr std::int32_t txSlotGitTags = 55;        ///< copies the names of the tags at a commit

// --- Loads of the Git browser: txGitLoadEnd ---------------------------------------------------------------------

inline constexpr std::int32_t txGitLoadBranches = 1;  ///< the branches
inline constexpr std::int32_t txGitLoadCommits = 2;   ///< the commits; the load ends with them

// --- Browser tree -----------------------------------------------------------------------------------------------

inline constexpr std::int32_t txNodeFirst = 2;       ///< flag of the first node of a filled tree; the others have none
inline constexpr std::int32_t txTreeDateColumn = 2;  ///< the column with the date of a commit

// --- Path kinds: txPathKind -------------------------------------------------------------------------------------

inline constexpr std::int32_t txPathLocal = 1;     ///< a plain local path
inline constexpr std::int32_t txPathRemote = 2;    ///< a path that a server holds
inline constexpr std::int32_t txPathRelative = 8;  ///< must be made absolute first

// --- Version-control records: TXVCRECORD::state -------------------------------------------------------------------

inline constexpr std::int32_t txVCStateUnknown = -1;
inline constexpr std::int32_t txVCStateOutsideRepository = 2;  ///< a directory that belongs to no repository
