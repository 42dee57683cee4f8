#pragma once

#include "common/cmArray.h"
#include "common/cmPath.h"
#include "common/cmString.h"
#include "filewatcher/status/WatchedSpelling.h"

// Parsers for the output of the Perforce client. The formats are described in its public command reference:
// https://www.perforce.com/manuals/cmdref/Content/CmdRef/p4_opened.html, and p4_client.html, p4_diff.html and p4_sync.html in
// the same folder. The output lines of sync are shown in
// https://www.perforce.com/manuals/v17.2/p4guide/Content/P4Guide/basic-tasks.recurring-file.sync.html.
// All functions are pure; any thread may call them. Returned paths have native separators.

/// A workspace and its local root folder.
struct PerforceClient {
    cmStringT name;  ///< null when the form has no name
    cmStringT root;  ///< without a trailing separator; empty for the root "null", with which files have full local paths
};

/// Parses the form that `client -o` writes. The root is the first of "Root" and "AltRoots" that contains the watched directory;
/// "Root" when none does.
PerforceClient parsePerforceClient(cmROStringT form, const WatchedSpelling& watched, cmPathStyle style = cmNativePathStyle);

/// A file that is opened in the workspace.
struct PerforceOpenedFile {
    cmStringT depotPath;  ///< with the escapes of the client's output
    cmStringT path;       ///< the local path
};

/// Parses the tagged output of `opened`. The field clientFile, "//client/path", gives a file's local path. Records of other
/// clients and records without that field are skipped.
cmArray<PerforceOpenedFile> parsePerforceOpened(cmROStringT output, const PerforceClient& client,
                                                cmPathStyle style = cmNativePathStyle);

/// Parses the output of `diff -sa`: one local path per line.
cmArray<cmStringT> parsePerforceDiff(cmROStringT output, cmPathStyle style = cmNativePathStyle);

/// Parses the output of `sync -n`. Returns the local paths of files with a newer revision in the depot: those that sync would
/// update or delete, and those of the `opened` files that it would leave unchanged for being opened.
cmArray<cmStringT> parsePerforceSync(cmROStringT output, const cmArray<PerforceOpenedFile>& opened,
                                     cmPathStyle style = cmNativePathStyle);

/// Whether every line of the client's standard error says that there is nothing to list.
bool isPerforceNothingToList(cmROStringT errorOutput);
