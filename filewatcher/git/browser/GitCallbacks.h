#pragma once

/// Registers the browser's callbacks with the editor, which calls them on its own thread. By slot:
///     47  GitBranchesModel* ()                                        returns the model; creates it when there is none
///     48  void (TXPSZ repository, TXPSZ git, std::int32_t windowId)   requests a refresh of the tree
///     49  std::int32_t ()                                             returns the number of commits that may be read
///     50  std::int32_t (std::int64_t commit, GitCommitInfo& info)     copies a commit; 0, or -1 when it has no row yet
///     51  void (cmStringT& repository, cmStringT& git)                returns the paths that the model loads with
///     52  std::int32_t (std::int64_t commit, GraphRow& row)           copies a commit's row of the graph; 0, or -1 without one
///     54  std::int32_t ()                                             returns the largest number of columns of a graph row
///     55  std::int32_t (std::int64_t commit, cmArray<cmStringT>&)     copies the names of the tags at a commit, shown or not;
///                                                                 0, or -1 when there is no such commit
/// Without a model the others answer like an empty one; so does slot 52 when the sizes at the beginning of the row are not ours.
void registerGitCallbacks();
/// Removes the callbacks, so that the editor never calls into an unloaded module.
void withdrawGitCallbacks();
