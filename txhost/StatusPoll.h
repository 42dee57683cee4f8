#pragma once

#include "common/cmArray.h"
#include "common/cmDictionary.h"
#include "txhost/ToolFiles.h"
#include "txhost/WatchedDirectories.h"

#include <chrono>
#include <deque>
#include <functional>
#include <optional>
#include <set>

/// What the pass over a directory has answered.
struct PassAnswer {
    const WatchedDirectory& directory;
    bool isOutside;                  ///< it is in no repository
    std::optional<Failure> failure;  ///< why the answer is not complete, if it is not
    FileStatuses files;              ///< the files in it whose status has changed since they were last reported
};

/// Functions that a StatusPoll calls, on the editor's thread.
struct StatusListener {
    std::function<void(const PassAnswer&)> passEnded;
    /// All passes of a round have ended. `files` are what PassAnswer::files did not report: files outside of the watched
    /// directories, and those that have no status any more.
    std::function<void(const Tool&, const FileStatuses& files)> roundEnded;
    /// Optional: a tool has come to another directory.
    std::function<void()> passBegan = {};
};

/// Asks the module for the status of directories. Each tool has rounds of its own, of one pass over each of its directories, so
/// that a tool which hangs holds up no other. The first round reports every file that has a status, later ones report changes.
/// For the editor's thread; there may be one at a time.
class StatusPoll {
public:
    using Clock = std::chrono::steady_clock;

    StatusPoll(Host& host, const cmArray<WatchedDirectory>& directories, StatusListener listener);
    ~StatusPoll();
    StatusPoll(const StatusPoll&) = delete;
    StatusPoll& operator=(const StatusPoll&) = delete;

    /// One more directory, from the next round of its tool on.
    void add(const WatchedDirectory& directory);
    /// The tools of the directories.
    cmArray<const Tool*> tools() const;
    /// Begins a round of a tool, whose last round must have ended. When the module refuses all of its directories, the round ends
    /// at once.
    void start(const Tool& tool);
    /// Runs the editor's event loop until `done` returns true, which is the result then, or until `deadline`. The listener is
    /// called meanwhile. A tool of which no pass ends within the patience of the options is named on standard error, with the
    /// directory that it hangs in: each directory once, until a pass over it has ended in time.
    bool runUntil(const std::function<bool()>& done, Clock::time_point deadline = Clock::time_point::max());

    /// Whether a round has not ended. After an interrupt none ends, because it may have ended the tool as well.
    bool isWaiting() const;
    /// Whose answers have not come, in words.
    cmStringT awaited() const;
    /// The directories whose answers have not come.
    cmArray<const WatchedDirectory*> unanswered() const;
    /// The files whose changed status has not been reported, because their rounds have not ended.
    FileStatuses takeUnreported();

private:
    /// The passes of one tool.
    struct Round {
        explicit Round(const Tool& asked) : tool(asked), files(asked) {}

        const Tool& tool;
        ToolFiles files;
        cmArray<const WatchedDirectory*> directories;
        std::set<cmStringT> waiting;              ///< directories whose passes have not ended
        cmStringT current;                        ///< the directory that the tool is looking at
        std::optional<Clock::time_point> tellAt;  ///< when the tool is named as one that is waited for
        std::set<cmStringT> told;                 ///< directories that were named, and have not answered in time since
    };

    Round& roundOf(const WatchedDirectory& directory) { return m_rounds.at(directory.tool.number); }
    void expectSign(Round& round);
    void beginPass(const cmStringT& path);
    void endPass(const WatchedDirectory& directory, std::int32_t status);
    void endRound(Round& round);
    void reportPass(const WatchedDirectory& directory, std::int32_t status);
    void collectChanges();
    Clock::time_point nextTelling() const;
    void tellWaiting();

    Host& m_host;
    std::deque<WatchedDirectory> m_directories;  ///< each stays where it is
    const StatusListener m_listener;
    cmSortedDictionary<std::int32_t, Round> m_rounds;  ///< by the tool's number
    cmDictionary<cmStringT, const WatchedDirectory*> m_byPath;
    cmDictionary<cmStringT, cmStringT> m_reasons;  ///< what the running passes have said, by directory
};
