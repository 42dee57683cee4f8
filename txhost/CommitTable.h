#pragma once

#include "txhost/JsonText.h"

// The table in which the module tells about a commit: that of _GitGetCommitInfo.

/// Gives a hash table all keys that the module fills. For the editor's thread.
void addCommitKeys(TXHVAR table);
/// Turns the empty lists of a filled table into arrays: the module writes no elements into them, so their variables are none.
void completeCommitLists(Json& table);
/// The names in their order, each once: the module joins the files that differ from each parent.
cmArray<cmStringT> eachOnce(const cmArray<cmStringT>& names);
