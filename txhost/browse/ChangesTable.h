#pragma once

#include "txhost/JsonText.h"
#include "txhost/browse/BrowseData.h"

/// The files of a diff, with what has happened to them: from the table that _GitGetDiffInfo has filled for a revision. `root` is
/// the directory that was asked about; the paths of the result begin there, with slashes.
cmArray<FileChange> changesOf(const Json& table, cmROStringT root);
/// The same list from the table that it has filled without a revision: what is staged and what is not, without contents.
cmArray<FileChange> workingCopyChangesOf(const Json& table);
