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

/// An opened file: where it is in the depot, as the client writes it, and here.
struct PerforceOpenedFile {
    cmStringT depotPath;
    cmStringT path;
};

/// The files in the tagged output of `opened`, whose records have a file's place here as "//client/path". Records of other
/// clients, or without that field, are passed over.
cmArray<PerforceOpenedFile> parsePerforceOpened(cmROStringT output, const PerforceClient& client,
                                                cmPathStyle style = cmNativePathStyle);

/// The local paths that `diff -sa` lists, one a line.
cmArray<cmStringT> parsePerforceDiff(cmROStringT output, cmPathStyle style = cmNativePathStyle);

/// The local paths of those files in the output of `sync -n` that are here in an older revision: to be updated or deleted, or
/// kept as they are because they are among the opened ones.
cmArray<cmStringT> parsePerforceSync(cmROStringT output, const cmArray<PerforceOpenedFile>& opened,
                                     cmPathStyle style = cmNativePathStyle);

/// Whether standard error says only that there is nothing to list.
bool isPerforceNothingToList(cmROStringT errorOutput);
