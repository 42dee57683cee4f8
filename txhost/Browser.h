#pragma once

#include "filewatcher/git/commits/GitCommitInfo.h"
#include "filewatcher/git/graph/GraphRow.h"
#include "txhost/Host.h"

#include <cstdint>
#include <functional>
#include <string>

/// The editor's Git browser: one repository that the module loads, as far as it has come. Ending it ends the load.
class Browser {
public:
    /// Begins to load; `restriction` takes the place of "all branches" on the log's command line when it is not empty. Throws
    /// HostError when the module cannot.
    Browser(Host& host, const cmStringT& repository, const cmStringT& restriction);
    ~Browser();
    Browser(const Browser&) = delete;
    Browser& operator=(const Browser&) = delete;

    /// Lets the editor run until `done` holds, the load has ended, or Ctrl-C. Returns whether it ran to one of the first two.
    bool waitFor(const std::function<bool()>& done);
    bool isLoading();

    /// How many commits there are so far, the working copy among them.
    std::int32_t count() const;
    /// False when the commit of that number is not shown, or not yet.
    bool commit(std::int64_t number, GitCommitInfo& info) const;
    bool graphRow(std::int64_t number, GraphRow& row) const;
    /// The most columns that the graph has so far.
    std::int32_t graphWidth() const;

    /// Empty names and hashes beyond the last branch.
    cmStringT branchName(std::int32_t number);
    cmStringT branchHash(std::int32_t number);
    /// Shows only the commits that match; false when there are none.
    bool filter(const std::string& text);

private:
    Host& m_host;
};
