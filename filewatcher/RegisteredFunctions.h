#pragma once

#include "txapi/txapi.h"

#include <cstdint>

// The functions that the module registers with the editor, in the order of registration. This header is their contract.
//
// Thread: the editor calls them on its own thread only.
// Text: UTF-8. Paths are absolute; reload and live diff also take relative ones, below the current directory. A text argument
// needs to be valid during the call only. A returned text lies in a static buffer of 1024 bytes that belongs to the function: it
// is cut off to fit, and valid until the next call of the same function. Variables: arguments of type TXHREFVAR are read or
// filled through the editor's services. The editor owns them. Codes: StatusCodes.h. A closed feature gate means that
// txFeatureAvailable answers 0. Failures are told in words, too: txVCPassError, txGitLoadEnd, txQueryError. Time: a call returns
// at once unless its contract says that it waits.
// Memory: no exception leaves a function, a callback or a timer's routine (bridge/EditorEntry.h). One that runs out of memory is
// given up, and the debug log says so; its contract names the result. What it had begun to fill may be filled in part.

extern "C" {

// --- Watch registry. These five are exported under their plain names as well. -------------------------------------
// Types and the bits of type masks: 1 Subversion, 4 Perforce, 8 Git. 16 and 32 are further types of Subversion and Git, but no
// bits of a mask. When the feature gate is closed, the functions do nothing and filewatcherAddPath returns -2173.

/// Queues the directory `path` for one status pass of the thread that `type` selects. The thread is created, configured and
/// started when needed; configuring calls a macro function of the editor. A path that is queued already is not queued again.
/// Properties 4 and 5 give the entry its context. For Subversion, `flag` not 0 includes the folders below the path, and property
/// 5 not 0 asks for "info" instead of "status". Returns 0: a start was attempted (when it fails, the passes over all queued paths
/// end with a failure; that of reading the settings is not reported), the type is unknown, or the tool's file status was switched
/// off because a run of the tool wrote too much; -1: the path was added to a thread that runs already; -2173: the feature gate is
/// closed.
/// Out of memory: -12; no pass over the path is promised.
TX_EXPORTED std::int32_t filewatcherAddPath(TXPSZ path, std::int32_t type, std::int32_t flag);
/// Removes `path` from the queue of one thread: that of the first bit in the mask, in the order 1, 8, 4. Paths are compared byte
/// by byte. A missing thread is created, but not started.
TX_EXPORTED void filewatcherRemovePath(TXPSZ path, std::int32_t typeMask);
/// Empties the queue of one thread, chosen in the same way. The thread keeps running.
TX_EXPORTED void filewatcherRemoveType(std::int32_t typeMask);
/// Reads the settings of type 1, 16, 8 or 32 from the editor, unless its thread has them already. A missing thread is created,
/// but not started; a macro function of the editor is called. Other types are ignored.
TX_EXPORTED void filewatcherInitType(std::int32_t type);
/// Stops and destroys the threads of all bits in the mask, in the order 1, 8, 4. Waits without limit until they have ended; a
/// running tool is ended, so this takes milliseconds.
TX_EXPORTED void filewatcherStop(std::int32_t typeMask);

/// Suspends (not 0) or resumes (0) all status threads, those that are created later included. A pass that runs is completed.
void filewatcherSetSuspendState(std::int32_t suspended);

// --- Reload tables --------------------------------------------------------------------------------------------------

/// Requests the dates of the files in the array `fileNames`; empty names are skipped. Waits at most `budgetMs` milliseconds
/// for them; a budget below 0 counts as 0. Results that have arrived, from earlier calls too, go into the hash table `result`:
/// the key is the name, the value an array of the modification time (64-bit, 100 ns units since 1601-01-01 UTC; 0 for none) and
/// 1 for a file that is read-only or not on a local path, else 0. There is no result for a file system without file times, and
/// none is delivered for an empty array; results without a `result` are dropped. A file whose date takes half the budget of the
/// latest call or longer is slow, even while its read still hangs: it has no result and is never requested again, until
/// filewatcher_stop_async_work. The other files are read meanwhile; while four reads hang, no file is read or waited for. A file
/// whose request still waits is not requested again. `arg1` and `arg2` are carried along without effect.
/// Returns 0; 1, with nothing requested, when there is no memory for the shared data or the thread cannot be started.
/// Out of memory: 1.
std::int32_t getFastReloadInfoTable(TXHREFVAR fileNames, std::int32_t arg1, std::int32_t arg2, TXHREFVAR result,
                                    std::int32_t budgetMs);
/// Adds the name of each slow file to the hash table `result`, with the value 1. Returns 0; 1 when there is no
/// memory for the shared data.
/// Out of memory: 1.
std::int32_t getSlowReloadFiles(TXHREFVAR result);

// --- Git browser and queries ------------------------------------------------------------------------------------------

/// Starts to load the branches and commits of a repository in the background, and offers the editor the callbacks of
/// GitCallbacks.h. `repository` is a directory in the working copy, `git` the executable. Two optional arguments follow those of
/// the prototype: 3, integer `force`; 4, text `logRestriction`: arguments of git log that replace "--all". Absent ones count as
/// 0 and empty. When a restricted load ends, all rows of the graph change once, before its txGitLoadEnd: lines to parents that
/// are not in the log go. Every call clears the model and ends a load that runs. A new load starts when there was no model, when
/// property 152 names another repository, when `force` is not 0, or when the setting "def_git_browser_single_load_limit" has
/// changed. May wait some milliseconds for the load that it ends. Returns 0, or 1 when a thread cannot be started. Out of
/// memory: 1.
std::int32_t gitGetBranchInfo(TXPSZ repository, TXPSZ git);
/// Ends a load and clears the model. Waits until its threads have ended, which takes milliseconds. Does nothing when the feature
/// gate is closed.
void gitBranchClose();
/// Fills elements of the hash table `result` with what is known of the commit `hash`. Only keys that the table holds are filled:
/// "hash", "parentHash", "authorName", "authorEmail", "committerDate" ("YYYY-MM-DD HH:mm:ss", local time), "comment" (the
/// subject), and the arrays "otherParents", "longComment" (lines), "modifiedFiles", "modifiedFilesByParent" (of a merge:
/// for each parent, in their order, an array of the files that differ from it; otherwise empty), "stagedFiles". The first four
/// are left as they were when they are not known. Nothing is filled when the branches model does not have the commit. For the
/// working copy, whose hash is empty, git is not run: it has no message and no files. Returns 0; -1 when git reports a fatal
/// error or `hash` begins with a dash; -2173 when the feature gate is closed; or why git could not be started. Waits for git
/// without limit; it is run a second time for the files by parent, whose key stays as it was when that run alone fails (git
/// before 2.31). Out of memory: -12.
std::int32_t gitGetCommitInfo(TXPSZ git, TXPSZ repository, TXPSZ hash, TXHREFVAR result);
/// Fills the array `result` with the revisions of `file`, newest first, as instances of the editor's class "SVCHistoryInfo".
/// Element 0 is the root entry; the index fields link the revisions as its children. `revision` is where the history begins;
/// empty for HEAD. Not 0: `newestOnly` asks for one revision, `follow` continues the history before renames, `workingFile` adds
/// an entry for the working file in front, unless there is no revision. A field that the class lacks is skipped; beside those
/// that the editor's history view shows, an instance has "parents" (hashes with blanks between them), "email" (the author's) and
/// "subject". Returns 0; -1 when git reports a fatal error or
/// `revision` begins with a dash; why git could not be started; or the editor's negative status when it has no such class.
/// `result` changes only when git succeeded. Waits for git without limit.
/// Out of memory: -12.
std::int32_t gitGetHistoryInfo(TXPSZ file, TXPSZ git, TXHREFVAR result, TXPSZ revision, std::int32_t newestOnly,
                               std::int32_t follow, std::int32_t workingFile);
/// Returns 1 while a load runs: the model's thread or its log thread; else 0.
std::int32_t gitGetBranchInfoRunning();
/// Refills the browser tree with the commits whose author, e-mail, subject or hash contains `text`; all commits for an empty
/// text. When no commit contains it, the rows stay as they are; while a load runs, the text is kept, and the tree is refilled as
/// soon as a commit with it is published. Rows that take longer than one slice (50 ms) follow from the browser's timer. `tree` is
/// not used. Returns 0; 1 when no commit contains the text; -104399 when there is no model, that is before the first
/// _GitGetBranchInfo and after filewatcher_stop_async_work; -2173 when the feature gate is closed.
/// Out of memory: -12.
std::int32_t gitFilterTree(TMStringConst text, TXHREFVAR tree);
/// Adds changes to the hash table `result`; paths of working-copy lists are relative to the top level, with slashes.
/// Without a revision: at the key `repository`, a hash table of the arrays "local" (files that differ from the index) and
/// "staged" (files in the index that differ from HEAD). With one: for each file in `repository` that differs from it, at its full
/// path (that of a renamed or copied file is the new one), a hash table with
///   "oldPath": the full path that a renamed or copied file comes from; empty for any other file;
///   "oldMode", "newMode": as git writes them ("100644"), equal when the mode did not change. The old one is empty for a new
///     file, the new one for a deleted file, and both when git names none: a rename of the very same contents;
///   "binary": 1 when git shows no lines because they are no text; else 0;
///   "hunks": an array of hash tables of the integers "oldStart", "oldCount", "newStart", "newCount" and the array "lines"; a
///     line begins with "+", "-", a blank or a backslash.
/// A revision that stands for a merge, such as "HEAD^!", compares with all of its parents at once and lists the files that
/// differ from each of them. "oldPath" is empty then; "oldMode" holds a mode for each parent, with commas between them; both
/// modes are empty when none changed. A hunk has, instead of "oldStart" and "oldCount", the array "oldRanges" of hash tables
/// of the integers "start" and "count", one for each parent; a line begins with one character for each parent: "+" when that
/// parent lacks the line, "-" when it has it and the merge lacks it, else a blank.
/// Returns 0; -1 when git reports a fatal error, when nothing differs from the revision, or when it begins with a dash; -2173
/// when the feature gate is closed; or why git could not be started. `result` changes on 0 only. Without a revision the second
/// command decides: "local" is left out when only its own command failed. Waits for git, at most three runs, without limit.
/// Out of memory: -12.
std::int32_t gitGetDiffInfo(TXPSZ repository, TXPSZ git, TXHREFVAR result, TXPSZ revision);
/// Returns 1 while the model's own thread runs, else 0.
std::int32_t gitGettingInfo();
/// Returns the name of a branch; "Error" for a number below 0 or past the last branch. 0 is the current branch. The text is valid
/// until the next call of this function.
/// Out of memory: "Error".
TXPSZ gitGetBranchName(std::int32_t number);
/// Returns the hash of a branch's tip; empty when there is no such branch. Valid until the next call of this function.
/// Out of memory: an empty text.
TXPSZ gitGetBranchHash(std::int32_t number);
/// Returns the hash of the current branch's tip; empty when it is not known. Valid until the next call of this function.
/// Out of memory: an empty text.
TXPSZ gitCurBranchEndHash();

// --- Recent files -----------------------------------------------------------------------------------------------------

/// Remembers the path of an opened file for the system's list of recent documents.
void recentFilesAdd(TXPSZ path);
/// Reports remembered paths to the system, oldest first: all when there are at most 20, else the newest 21. Then forgets all of
/// them. A file that does not exist is skipped. The first call sets up the system's list for this thread. Waits for the disk.
void recentFilesProcessPending();

/// Stops and destroys every background thread, in this order: file dates, Git, Subversion and Perforce status, Git browser, live
/// diff. Forgets the slow files. Waits without limit until they have ended: milliseconds, because running tools are ended, but as
/// long as a file system takes when a date is being read.
/// The editor calls it before it unloads the module. Further calls of all functions are allowed.
void filewatcher_stop_async_work();

// --- Live diff ----------------------------------------------------------------------------------------------------------
// `command` is a command line that writes a committed revision of `file` to its standard output; it runs in
// `workingDirectory`. `cacheFile` receives the path of the file that will hold the revision, null when the cache has no place
// for it; it is unchanged on -104360 and when the editor forbids the fetch. A fetch that fails leaves an older cache file as it
// was. `origin` has no effect.

/// Fetches the revision in the background. Returns 0 when the fetch was started; 1 when the thread cannot be started; -104360
/// while a fetch runs; -104357 when there is no place for the cache file; or the status with which the editor forbids the fetch
/// (property 6). Does not wait for the command.
/// Out of memory: -104357.
std::int32_t svcLiveDiffGetVCFile(TMStringConst origin, TMStringConst command, TMStringConst file, TMStringByRef cacheFile,
                                  TMStringConst workingDirectory);
/// Fetches the revision before it returns; waits for the command without limit. Returns 0; -104370 when the command failed, when
/// there is no place for the cache file and when it cannot be written; -104360 while a background fetch runs.
/// Out of memory: -104370.
std::int32_t svcLiveDiffGetVCFileImmediate(TMStringConst origin, TMStringConst command, TMStringConst file,
                                           TMStringByRef cacheFile, TMStringConst workingDirectory);
/// Returns 1 when the cache file holds its revision (the output of a fetch that was stopped counts as complete), the code of a
/// fetch that failed (-104357, -104370), else 0. When property 2 is not 0, forgets the outcome and returns 0.
/// Out of memory: -104357.
std::int32_t svcLiveDiffHaveVCFile(TMStringConst cacheFile);

}  // extern "C"
