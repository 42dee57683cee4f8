#pragma once

#include "common/cmArray.h"
#include "common/cmDictionary.h"
#include "common/cmString.h"
#include "filewatcher/git/commits/BlockArray.h"
#include "filewatcher/git/commits/CommitIds.h"
#include "filewatcher/git/commits/GitCommitInfo.h"
#include "filewatcher/git/commits/GitLogRecord.h"
#include "filewatcher/git/commits/TextBlocks.h"

#include <cstddef>
#include <cstdint>
#include <span>

/// The commits of a log, numbered in the order in which they are added; number 0 is the working copy. Kept small: a commit takes
/// about 80 bytes and the length of its subject. Every hash in the log, also one that occurs as a parent only, has an id. For
/// one thread at a time.
class CommitStore {
public:
    static constexpr std::uint32_t none = CommitIds::none;
    static constexpr cmROStringT workingCopySubject = "Uncomitted changes";  ///< spelled as the editor expects it

    std::uint32_t count() const { return static_cast<std::uint32_t>(m_commits.size()); }

    /// Adds the working copy. Call before the first `add`.
    void addWorkingCopy();
    /// Adds a commit. Returns false, and adds nothing, when it was added before or its hash is invalid. Invalid parents are left
    /// out.
    bool add(const GitLogRecord& record);

    /// Returns the id of a hash and gives it one when it has none; `none` when `hash` is invalid.
    std::uint32_t intern(cmROStringT hash) { return m_ids.intern(hash); }
    /// Returns the number of a commit by its hash or short hash (when several share it, that of the first one); the empty hash
    /// stands for the working copy. `none` when there is no such commit.
    std::uint32_t find(cmROStringT hash) const;
    /// Returns the number of the commit with this id; `none` when that was not added.
    std::uint32_t numberOf(std::uint32_t id) const { return id < m_numbers.size() ? m_numbers[id] : none; }

    // The following take the number of an existing commit.
    std::uint32_t idOf(std::uint32_t number) const { return m_commits[number].id; }
    cmROStringT subject(std::uint32_t number) const { return {m_commits[number].subject, m_commits[number].subjectLength}; }
    std::uint32_t author(std::uint32_t number) const { return m_commits[number].author; }
    /// `none` for a root.
    std::uint32_t firstParent(std::uint32_t number) const { return m_commits[number].firstParent; }
    std::span<const std::uint32_t> otherParents(std::uint32_t number) const;
    /// Sets `info` to what the log says about the commit; its other members get their initial values.
    void copy(std::uint32_t number, GitCommitInfo& info) const;

    /// An author; commits refer to authors by their index.
    struct Author {
        cmROStringT name;
        cmROStringT email;
    };
    const cmArray<Author>& authors() const { return m_authors; }
    /// Takes an id.
    cmStringT hashText(std::uint32_t id) const { return m_ids.text(id); }
    /// Writes the digits of an id's hash to `place`, which has room for CommitIds::mostDigits. Returns a view of them, which is
    /// empty for the working copy.
    cmROStringT writeHash(std::uint32_t id, char* place) const { return m_ids.write(id, place); }

private:
    struct Commit {
        std::uint32_t id;
        std::uint32_t firstParent;
        std::uint32_t otherParents;  ///< index in m_otherParents of their count, which their ids follow; `none` without any
        std::uint32_t author;
        std::int64_t time;
        const char* subject;
        std::uint32_t subjectLength;
    };

    void append(std::uint32_t id, const GitLogRecord& record);
    std::uint32_t internAuthor(cmROStringT name, cmROStringT email);

    CommitIds m_ids;
    cmArray<std::uint32_t> m_numbers;  ///< by id
    BlockArray<Commit> m_commits;
    cmArray<std::uint32_t> m_otherParents;
    cmArray<Author> m_authors;
    cmDictionary<cmROStringT, std::uint32_t> m_authorNumbers;  ///< the key is name, NUL and e-mail
    TextBlocks m_texts;
};
