#pragma once

#include "txapi/txapi.h"

#include <cstdint>

// The functions that the module registers with the editor, in the order of registration. The editor calls them on its
// own thread only; each returns without waiting for a disk, a network or a tool, but those that stop threads or
// say otherwise. What each does stands with its implementation's header.

extern "C" {

// Watch registry; exported under their plain names as well.

/// Queues the directory `path` for one status pass of the watch type's thread, which is created, configured and started
/// as needed. 0: started, unknown type, or display switched off after too much output; -1: added to a thread that runs;
/// -2173: the editor's edition lacks the feature.
TX_EXPORTED std::int32_t filewatcherAddPath(TXPSZ path, std::int32_t type, std::int32_t flag);
/// Takes one path (compared to the byte) out of the queue of the first type in the mask: 1, else 8, else 4.
TX_EXPORTED void filewatcherRemovePath(TXPSZ path, std::int32_t typeMask);
/// Empties that queue; the thread goes on.
TX_EXPORTED void filewatcherRemoveType(std::int32_t typeMask);
/// Reads the settings of a type (1, 16, 8 or 32) unless its thread has them.
TX_EXPORTED void filewatcherInitType(std::int32_t type);
/// Stops and destroys the threads in the mask; returns when they have ended.
TX_EXPORTED void filewatcherStop(std::int32_t typeMask);

/// Suspends (not 0) or resumes all status threads, those that come later included; waits for nothing.
void filewatcherSetSuspendState(std::int32_t suspended);
/// Stops and destroys every background thread; returns when they have ended.
void filewatcher_stop_async_work();

// Reload tables. What is slow is on its list until all work is stopped.

/// Asks for the dates of the files in an array and waits at most `budgetMs`. Fills the hash table `result` with what has
/// arrived, from earlier calls too: name to [time of modification, 0 for none; 1 when read-only]. A file whose date takes
/// half the budget or more is slow: it is never asked for again. 0; 1 when there is no memory.
std::int32_t getFastReloadInfoTable(TXHREFVAR fileNames, std::int32_t arg1, std::int32_t arg2, TXHREFVAR result,
                                    std::int32_t budgetMs);
/// Adds the name of each slow file to the hash table, with 1. 0; 1 when there is no memory.
std::int32_t getSlowReloadFiles(TXHREFVAR result);

// Git browser.
std::int32_t gitGetBranchInfo(TXPSZ repository, TXPSZ git);
void gitBranchClose();
/// Fills the hash table `result` with what is known of a commit: of the keys "hash", "parentHash", "otherParents", "authorName",
/// "authorEmail", "committerDate", "comment", "longComment", "modifiedFiles" and "stagedFiles" those that it holds; none when
/// the branches model has no such commit. Returns the status of the git command; -2173. Waits for git.
std::int32_t gitGetCommitInfo(TXPSZ git, TXPSZ repository, TXPSZ hash, TXHREFVAR result);
/// Fills the array `result` with the revisions of a file as instances of the editor's class "SVCHistoryInfo", linked by their
/// index fields as children of element 0. `revision` (may be empty) is where the history begins, `newestOnly` shows one,
/// `follow` goes on beyond renames, `workingFile` puts an entry for the working file in front. Returns the status of the
/// git commands; -1 for a revision that begins with a dash. Waits for git.
std::int32_t gitGetHistoryInfo(TXPSZ file, TXPSZ git, TXHREFVAR result, TXPSZ revision, std::int32_t newestOnly,
                               std::int32_t follow, std::int32_t workingFile);
std::int32_t gitGetBranchInfoRunning();
std::int32_t gitFilterTree(TMStringConst text, TXHREFVAR tree);
/// Without a revision adds to the hash table `result`, at the key `repository`, a table of two arrays: "local", the files that
/// differ from the index, and "staged", those in it that differ from HEAD. With a revision adds for every file that differs,
/// at its full path, a table whose "hunks" are tables of "oldStart", "oldCount", "newStart", "newCount" and "lines", each
/// line behind its + - blank or backslash. Returns the status of the last git command; -1 when nothing differs from the
/// revision or it begins with a dash; -2173. Waits for git.
std::int32_t gitGetDiffInfo(TXPSZ repository, TXPSZ git, TXHREFVAR result, TXPSZ revision);
std::int32_t gitGettingInfo();
TXPSZ gitGetBranchName(std::int32_t number);
TXPSZ gitGetBranchHash(std::int32_t number);
TXPSZ gitCurBranchEndHash();

// Recent files.

/// Keeps the path of an opened file for the system's list of recent documents.
void recentFilesAdd(TXPSZ path);
/// Hands the newest 21 of the paths that were kept to the system, in the order in which they came, and forgets them all. Files
/// that do not exist are passed over. Waits for the disk.
void recentFilesProcessPending();

// Live diff. `command` writes a committed revision of `file` to its standard output; it runs in `workingDirectory`.
// `cacheFile` receives the path of the file for it in the editor's cache; `origin` is the editor's own.

/// Fetches the revision in the background: 0; 1 when the thread cannot be started; -104360 while a fetch runs;
/// -104357 when the cache has no place for it; or the status with which the editor forbids it.
std::int32_t svcLiveDiffGetVCFile(TMStringConst origin, TMStringConst command, TMStringConst file, TMStringByRef cacheFile,
                                  TMStringConst workingDirectory);
/// Fetches it before it returns: 0, -104370 when it cannot be had or written, or -104360 while a fetch runs.
std::int32_t svcLiveDiffGetVCFileImmediate(TMStringConst origin, TMStringConst command, TMStringConst file,
                                           TMStringByRef cacheFile, TMStringConst workingDirectory);
/// 1 when the cache file holds its revision, the status of a fetch that failed, else 0.
std::int32_t svcLiveDiffHaveVCFile(TMStringConst cacheFile);

}  // extern "C"
