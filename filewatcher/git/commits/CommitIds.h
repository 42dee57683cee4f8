#pragma once

#include "common/cmArray.h"
#include "common/cmString.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <deque>

/// A hash in binary.
struct CommitHash {
    std::array<std::uint8_t, 20> bytes{};

    /// Of 40 hexadecimal digits; false for anything else.
    static bool parse(cmROStringT digits, CommitHash& hash);
    cmStringT text() const;
    /// Writes 40 digits in lower case.
    void write(char* digits) const;
    /// Its first seven digits.
    std::uint32_t shortKey() const
    {
        return static_cast<std::uint32_t>(bytes[0] << 20 | bytes[1] << 12 | bytes[2] << 4 | bytes[3] >> 4);
    }

    friend bool operator==(const CommitHash&, const CommitHash&) = default;
};

/// Gives each hash a small number of its own, in the order of coming. For one thread at a time.
class CommitIds {
public:
    static constexpr std::uint32_t none = 0xFFFFFFFF;
    static constexpr std::uint32_t workingCopy = 0;  ///< the one with the empty hash, there from the start
    static constexpr std::size_t shortLength = 7;

    CommitIds() { clear(); }
    void clear();
    /// How many there are.
    std::uint32_t count() const { return static_cast<std::uint32_t>(m_hashes.size()); }
    const CommitHash& hash(std::uint32_t id) const { return m_hashes[id]; }

    std::uint32_t intern(const CommitHash& hash);
    std::uint32_t find(const CommitHash& hash) const;
    /// Those whose hash begins with seven digits, in no order.
    cmArray<std::uint32_t> findShort(cmROStringT digits) const;

private:
    /// One part of an open-addressing table, a power of two long. Where a hash goes depends on its first digits alone, so that
    /// the same table finds it by those. Parts grow one by one: no call takes long.
    struct Part {
        cmArray<std::uint32_t> slots;
        std::size_t used = 0;
    };

    static std::size_t partOf(std::uint32_t shortKey) { return shortKey >> 20; }
    static std::size_t home(const Part& part, std::uint32_t shortKey);
    static std::size_t next(const Part& part, std::size_t slot) { return (slot + 1) & (part.slots.size() - 1); }
    /// Where the hash is, or where it would go.
    std::size_t slotOf(const Part& part, const CommitHash& hash) const;
    void grow(Part& part);

    std::deque<CommitHash> m_hashes;
    cmArray<Part> m_parts;
};
