#pragma once

#include "common/cmArray.h"
#include "common/cmPath.h"
#include "common/cmString.h"

// What the Perforce client writes, as text. The formats are those of its public command reference:
// https://www.perforce.com/manuals/cmdref/Content/CmdRef/p4_opened.html and p4_client.html, p4_diff.html, p4_sync.html beside
// it; https://www.perforce.com/manuals/v17.2/p4guide/Content/P4Guide/basic-tasks.recurring-file.sync.html shows the lines of
// sync.

/// A workspace: its name, and the local folder that it fills.
struct PerforceClient {
    cmStringT name;  ///< null when the form names none
    cmStringT root;  ///< in native separators, without one at its end; empty for "null", when files have full local paths
};

/// Reads the form that `client -o` writes.
PerforceClient parsePerforceClient(cmROStringT form, cmPathStyle style = cmNativePathStyle);

/// The local paths of the files in the tagged output of `opened`, whose records have a file's place as "//client/path".
/// Records of other clients, or without that field, are passed over.
cmArray<cmStringT> parsePerforceOpened(cmROStringT output, const PerforceClient& client, cmPathStyle style = cmNativePathStyle);

/// The local paths that `diff -sa` lists, one a line.
cmArray<cmStringT> parsePerforceDiff(cmROStringT output, cmPathStyle style = cmNativePathStyle);

/// The local paths of those files in the output of `sync -n` that are here in an older revision: to be updated or deleted.
cmArray<cmStringT> parsePerforceSync(cmROStringT output, cmPathStyle style = cmNativePathStyle);

/// Whether standard error says only that there is nothing to list.
bool isPerforceNothingToList(cmROStringT errorOutput);
