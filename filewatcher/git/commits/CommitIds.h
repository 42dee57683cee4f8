#pragma once

#include "common/cmArray.h"
#include "common/cmString.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <deque>

/// A commit's hash in binary.
struct CommitHash {
    static constexpr std::size_t digits = 40;  ///< of its text

    std::array<std::uint8_t, digits / 2> bytes{};

    /// Reads a hash from text. Returns false unless `text` consists of exactly `digits` hexadecimal digits.
    static bool parse(cmROStringT text, CommitHash& hash);
    /// The digits in lower case.
    cmStringT text() const;
    /// Writes the digits in lower case to `place`, without a NUL.
    void write(char* place) const;
    /// The number that the short hash (seven digits) stands for.
    std::uint32_t shortKey() const
    {
        return static_cast<std::uint32_t>(bytes[0] << 20 | bytes[1] << 12 | bytes[2] << 4 | bytes[3] >> 4);
    }

    friend bool operator==(const CommitHash&, const CommitHash&) = default;
};

/// Numbers hashes: each has an id, given in the order in which they are interned. For one thread at a time.
class CommitIds {
public:
    static constexpr std::uint32_t none = 0xFFFFFFFF;
    static constexpr std::uint32_t workingCopy = 0;  ///< its hash is empty; it has its id from the start

    CommitIds();
    /// The number of ids.
    std::uint32_t count() const { return static_cast<std::uint32_t>(m_hashes.size()); }
    const CommitHash& hash(std::uint32_t id) const { return m_hashes[id]; }

    /// Returns the id of a hash; gives it one when it has none.
    std::uint32_t intern(const CommitHash& hash);
    /// Returns the id of a hash; `none` when it has none.
    std::uint32_t find(const CommitHash& hash) const;
    /// Returns the ids of the hashes that begin with the short hash `text`, in no particular order.
    cmArray<std::uint32_t> findShort(cmROStringT text) const;

private:
    /// One part of an open-addressing hash table; its size is a power of two. The slot of a hash depends on its short hash only,
    /// so that one table serves both lookups. Parts grow one at a time, so that no call takes long.
    struct Part {
        cmArray<std::uint32_t> slots;
        std::size_t used = 0;
    };

    static std::size_t partOf(std::uint32_t shortKey) { return shortKey >> 20; }
    static std::size_t home(const Part& part, std::uint32_t shortKey);
    static std::size_t next(const Part& part, std::size_t slot) { return (slot + 1) & (part.slots.size() - 1); }
    /// The slot that holds the hash, or the free one for it.
    std::size_t slotOf(const Part& part, const CommitHash& hash) const;
    void grow(Part& part);

    std::deque<CommitHash> m_hashes;  ///< by id
    cmArray<Part> m_parts;
};
