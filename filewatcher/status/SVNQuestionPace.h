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
    afterPass,  ///< it is asked after the pass, because it, or another one, was silent before
};

/// Paces the questions to Subversion's servers: at most one a minute for each directory, answered or not, and none for a minute
/// after one that was ended during its pass because the server was silent. A directory that was silent asks after its passes from
/// then on; one that is due during such a minute does so until it is answered, so that a silent server holds up the passes only
/// once. Knows why the last question of a directory brought no answer. Forgets a directory a minute after its last question,
/// unless it asks after its passes or lacks an answer; every call costs the same however many there are. Ticks are milliseconds
/// and may wrap around. For one thread at a time.
class SVNQuestionPace {
public:
    /// Whether the pass over a directory that is due at `now` asks. Notes only that it was held back.
    SVNShowUpdates showUpdates(const cmStringT& directory, std::uint32_t now);
    /// Whether all directories run without questions at `now`.
    bool isSilentMinute(std::uint32_t now);

    /// A question has begun. Call one of the next ones when it has ended; until then the directory's last state stays.
    void noteAsked(const cmStringT& directory, std::uint32_t now);
    void noteAnswer(const cmStringT& directory);
    /// The server, or the client, gave `reason` instead of an answer.
    void noteRefusal(const cmStringT& directory, const cmStringT& reason) { m_directories[directory].missingAnswer = reason; }
    /// The question was ended because the server was silent. From now on it is asked after the passes over this directory.
    void noteSilence(const cmStringT& directory, std::uint32_t now, const cmStringT& reason);
    /// The directory turned out to be no working copy: as if it had never been asked for.
    void forget(const cmStringT& directory) { m_directories.erase(directory); }

    /// Whether a question of this directory was ended because of silence.
    bool wasSilent(const cmStringT& directory) const;
    /// Why the last question of a directory has brought no answer, or was held back; empty when it has, and when there was none.
    cmStringT missingAnswer(const cmStringT& directory) const;
    /// The number of directories that something is known of.
    std::size_t size() const { return m_directories.size(); }

private:
    struct Directory {
        std::optional<std::uint32_t> lastShowUpdatesTick;  ///< when the server was last asked
        bool wasSilent = false;
        bool wasHeldBack = false;  ///< and not answered since
        cmStringT missingAnswer;

        bool asksAfterPass() const { return wasSilent || wasHeldBack; }
    };
    struct Question {
        std::uint32_t tick;
        cmStringT directory;
    };

    static bool isDue(const Directory& directory, std::uint32_t now);
    static void holdBack(Directory& directory);
    void forgetExpired(std::uint32_t now);

    cmDictionary<cmStringT, Directory> m_directories;
    std::deque<Question> m_questions;  ///< those whose directories were not looked at for expiry yet, oldest first
    std::optional<std::uint32_t> m_silenceTick;
};
