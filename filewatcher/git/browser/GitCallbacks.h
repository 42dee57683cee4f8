#pragma once

/// Offers the editor the browser's callbacks, all for the editor's thread, at their slots:
///     47  GitBranchesModel* ()                                            the model, made when there is none
///     48  void (TXPSZ repository, TXPSZ git, std::int32_t windowId)       asks for the tree to be refreshed
///     49  std::int32_t ()                                                 how many commits may be read
///     50  std::int32_t (std::int64_t commit, GitCommitInfo& info)         copies one; -1 when it cannot be shown yet
///     51  void (cmStringT& repository, cmStringT& git)                    what the model loads from
///     52  std::int32_t (std::int64_t commit, GraphRow& row)               copies a commit's row of the graph; -1 without one
///     54  std::int32_t ()                                                 the most columns that a row of the graph has
/// Without a model all but the first answer as an empty one does.
void registerGitCallbacks();
/// Takes them back; their code may go away afterwards.
void withdrawGitCallbacks();
