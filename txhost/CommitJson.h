#pragma once

#include "filewatcher/git/commits/GitCommitInfo.h"
#include "txhost/JsonText.h"

/// A commit as all commands print it: "hash", "parents", "author", "email", "date", "subject", and "message" where it has one.
/// What is not committed has no hash, author, email and date. Remembers in the console that a date is missing, if it is.
Json commitJson(const GitCommitInfo& commit);

/// The first parent, if there is one, and the others.
cmArray<cmStringT> parentsOf(const GitCommitInfo& commit);
