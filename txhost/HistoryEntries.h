#pragma once

#include "txhost/JsonText.h"

#include <string>

// The revisions of a file as the module tells them: instances of the editor's class, as a tree.

/// The entries in order: the children of the tree's root. They live as long as `tree`.
cmArray<const Json*> historyEntries(const Json& tree);
/// A text of an entry; empty when it is not known.
std::string historyField(const Json& entry, const char* name);
