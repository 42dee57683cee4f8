#pragma once

#include "common/cmMutex.h"
#include "common/cmThread.h"
#include "common/cmThreadEvent.h"
#include "txhost/browse/BrowseData.h"

#include <functional>
#include <memory>
#include <optional>

/// Where a repository is.
struct RepositoryPlace {
    cmStringT root;       ///< the top level of the working copy; what was browsed when there is none or git does not tell
    cmStringT index{""};  ///< the path of git's index; empty when git does not tell
    bool isBare = false;  ///< there is no working copy
    friend bool operator==(const RepositoryPlace&, const RepositoryPlace&) = default;
};

/// Asks git where a repository is, what names there are in it, and from then on every two seconds whether they have moved: on a
/// thread of its own, because git may hang. The destructor ends git and the thread. For one thread, but for `onNews`.
class RepositoryWatch : private cmThread {
public:
    /// `onNews` is called on the watching thread when an answer has changed. Throws HostError when there is no thread.
    RepositoryWatch(cmStringT git, cmStringT repository, std::function<void()> onNews);
    ~RepositoryWatch() override;

    /// Nothing until git has ended.
    std::optional<RepositoryPlace> place();
    /// The names when the watch began; null until git has told them.
    std::shared_ptr<const cmArray<GitRefName>> names();
    /// Whether some lead to other commits now.
    bool haveMoved();

private:
    std::int32_t run() override;
    std::optional<std::int32_t> ask(cmROStringT arguments, cmStringT& output);
    void look();
    bool findPlace();
    std::optional<cmStringT> refs();
    void readRefs();

    const cmStringT m_git;
    const cmStringT m_repository;
    const std::function<void()> m_onNews;
    cmThreadEvent m_stop{true, false};
    bool m_hasPlace = false;               // of the watching thread: git has told it
    std::optional<cmStringT> m_firstRefs;  // of the watching thread, as git writes them

    cmMutex m_lock;
    std::optional<RepositoryPlace> m_place CM_GUARDED_BY(m_lock);
    std::shared_ptr<const cmArray<GitRefName>> m_names CM_GUARDED_BY(m_lock);
    bool m_haveMoved CM_GUARDED_BY(m_lock) = false;
};
