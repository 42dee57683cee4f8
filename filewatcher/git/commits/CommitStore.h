#pragma once

#include "common/cmArray.h"
#include "common/cmDictionary.h"
#include "common/cmString.h"
#include "filewatcher/git/commits/CommitIds.h"
#include "filewatcher/git/commits/GitCommitInfo.h"
#include "filewatcher/git/commits/GitLogRecord.h"
#include "filewatcher/git/commits/TextBlocks.h"

#include <cstddef>
#include <cstdint>
#include <deque>
#include <span>

/// The commits of a log, by number in the order of coming, kept small: a commit takes some 130 bytes and its subject's
/// length. Commit 0 is the working copy. Every hash that is met, be it only as a parent's, has an id. For one thread at a time.
class CommitStore {
public:
    static constexpr std::uint32_t none = CommitIds::none;
    static constexpr cmROStringT workingCopySubject = "Uncomitted changes";  // spelled as the editor knows it

    void clear();
    std::uint32_t count() const { return static_cast<std::uint32_t>(m_commits.size()); }

    /// Comes first.
    void addWorkingCopy();
    /// False for a commit that is there already and for one whose hash is no hash. Parents that are none are left out.
    bool add(const GitLogRecord& record);

    /// The id of a hash, which it is given when it has none yet; `none` for what is no hash.
    std::uint32_t intern(cmROStringT hash);
    /// The number of a commit by its hash or by the first seven digits of it (of several the first commit's); the empty
    /// hash is the working copy's. `none` when there is no such commit.
    std::uint32_t find(cmROStringT hash) const;
    /// The number of the commit with this id; `none` when only children of it have come.
    std::uint32_t numberOf(std::uint32_t id) const { return id < m_numbers.size() ? m_numbers[id] : none; }

    // Of the commit with this number, which exists.
    std::uint32_t idOf(std::uint32_t number) const { return m_commits[number].id; }
    const CommitHash& hash(std::uint32_t number) const { return m_ids.hash(idOf(number)); }
    cmROStringT subject(std::uint32_t number) const { return {m_commits[number].subject, m_commits[number].subjectLength}; }
    std::uint32_t author(std::uint32_t number) const { return m_commits[number].author; }
    /// `none` for a root.
    std::uint32_t firstParent(std::uint32_t number) const { return m_commits[number].firstParent; }
    std::span<const std::uint32_t> otherParents(std::uint32_t number) const;
    /// What the log tells of it; the rest of `info` is as a new one.
    void copy(std::uint32_t number, GitCommitInfo& info) const;

    /// An author, by numbers from 0.
    struct Author {
        cmROStringT name;
        cmROStringT email;
    };
    const cmArray<Author>& authors() const { return m_authors; }
    cmStringT hashText(std::uint32_t id) const { return m_ids.hash(id).text(); }

private:
    struct Commit {
        std::uint32_t id;
        std::uint32_t firstParent;
        std::uint32_t otherParents;  ///< in m_otherParents their number, and behind it their ids; `none` without any
        std::uint32_t author;
        std::int64_t time;
        const char* subject;
        std::uint32_t subjectLength;
    };

    void append(std::uint32_t id, const GitLogRecord& record);
    std::uint32_t internAuthor(cmROStringT name, cmROStringT email);

    CommitIds m_ids;
    cmArray<std::uint32_t> m_numbers;  ///< by id
    std::deque<Commit> m_commits;      // it never moves them: no call takes long
    cmArray<std::uint32_t> m_otherParents;
    cmArray<Author> m_authors;
    cmDictionary<cmROStringT, std::uint32_t> m_authorNumbers;  ///< by name, NUL and e-mail
    TextBlocks m_texts;
};
