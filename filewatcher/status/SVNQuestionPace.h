#pragma once

#include "common/cmDictionary.h"
#include "common/cmString.h"

#include <cstddef>
#include <cstdint>
#include <deque>
#include <optional>

/// Whether a pass asks Subversion's server for newer changes.
enum class SVNShowUpdates {
    no,         ///< it was asked less than a minute ago
    heldBack,   ///< it should be asked, but a server was silent less than a minute ago
    now,        ///< the pass asks it
    afterPass,  ///< it is asked after the pass, because it was silent before
};

/// Paces the questions to Subversion's servers: at most one a minute for each directory, answered or not, and none for a minute
/// after one that was ended during its pass because the server was silent. Knows why the last question of a directory brought no
/// answer. Keeps no entry that is older than a minute and says nothing; every call costs the same however many there are. Ticks
/// are milliseconds and may wrap around. For one thread at a time.
class SVNQuestionPace {
public:
    /// Whether the pass over a directory that is due at `now` asks. Counts nothing.
    SVNShowUpdates showUpdates(const cmStringT& directory, std::uint32_t now);
    /// Whether all directories run without questions at `now`.
    bool isSilentMinute(std::uint32_t now);

    /// A question has begun. Call one of the next ones when it has ended; without, the directory has no answer yet.
    void noteAsked(const cmStringT& directory, std::uint32_t now);
    void noteAnswer(const cmStringT& directory) { m_directories[directory].missingAnswer = ""; }
    /// The server, or the client, gave `reason` instead of an answer.
    void noteRefusal(const cmStringT& directory, const cmStringT& reason) { m_directories[directory].missingAnswer = reason; }
    /// The question was ended because the server was silent. From now on it is asked after the passes over this directory.
    void noteSilence(const cmStringT& directory, std::uint32_t now, const cmStringT& reason);
    /// The directory turned out to be no working copy: as if it had never been asked for.
    void forget(const cmStringT& directory) { m_directories.erase(directory); }

    /// Why the last question of a directory has brought no answer; empty when it has, and when there was none.
    cmStringT missingAnswer(const cmStringT& directory) const;
    /// The number of directories that something is known of.
    std::size_t size() const { return m_directories.size(); }

private:
    struct Directory {
        std::uint32_t lastShowUpdatesTick = 0;  ///< when the server was last asked
        bool asksAfterPass = false;
        cmStringT missingAnswer;
    };
    struct Question {
        std::uint32_t tick;
        cmStringT directory;
    };

    void forgetExpired(std::uint32_t now);

    cmDictionary<cmStringT, Directory> m_directories;
    std::deque<Question> m_questions;  ///< those whose directories were not looked at for expiry yet, oldest first
    std::optional<std::uint32_t> m_silenceTick;
};
