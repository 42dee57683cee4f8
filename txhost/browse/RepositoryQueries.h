#pragma once

#include "txhost/Host.h"
#include "txhost/browse/BrowseData.h"

#include <utility>

enum class MessageAnswer {
    complete,
    notLoaded,  ///< the browser does not have the commit, at least not yet
    failed,
};

/// What the module's queries answer about one repository, as values. Each waits for git without limit. What cannot be answered is
/// told in the value's failure. For the editor's thread, while the repository's browser exists.
class RepositoryQueries {
public:
    /// `root` is the top level of the working copy, or the directory of a repository that has none.
    RepositoryQueries(Host& host, cmStringT root) : m_host(host), m_root(std::move(root)) {}

    /// Adds the message and the names of the changed files to what is known of a commit: its hash at least.
    MessageAnswer addMessage(CommitDetails& details);
    /// Adds what the commit has changed in its files. Its parents must be known.
    void addChanges(CommitDetails& details);

    /// Which files of the working copy are changed, without contents.
    CommitDetails workingCopy();
    /// Adds the contents.
    void addWorkingChanges(CommitDetails& details);

    FileHistory history(const FileQuestion& question);

private:
    cmArray<FileChange> changes(const cmStringT& revision, cmStringT& failure);
    cmStringT failureOfQuery(std::int32_t status);

    Host& m_host;
    const cmStringT m_root;
};
