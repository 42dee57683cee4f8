#pragma once

#include "common/cmArray.h"
#include "common/cmString.h"

#include <cstddef>
#include <cstdint>
#include <memory>

/// Numbers the hashes of one repository: each has an id, given in the order in which they are interned. All of them have the same
/// length, 40 or 64 hexadecimal digits, which the first one decides. Hashes are stored in binary; one of 40 digits takes 20
/// bytes. For one thread at a time.
class CommitIds {
public:
    static constexpr std::uint32_t none = 0xFFFFFFFF;
    static constexpr std::uint32_t workingCopy = 0;  ///< its hash is empty; it has its id from the start
    static constexpr std::size_t mostDigits = 64;

    CommitIds();
    /// The number of ids.
    std::uint32_t count() const { return m_count; }
    /// Writes the digits of an id's hash, in lower case, to `place`, which has room for mostDigits. Returns a view of them.
    cmROStringT write(std::uint32_t id, char* place) const;
    /// The digits of an id's hash, in lower case.
    cmStringT text(std::uint32_t id) const;

    /// Returns the id of a hash; gives it one when it has none. `none` when `digits` is no hash or has another length than the
    /// first one.
    std::uint32_t intern(cmROStringT digits);
    /// Returns the id of a hash; `none` when it has none.
    std::uint32_t find(cmROStringT digits) const;
    /// Returns the ids of the hashes that begin with the short hash `digits`, in no particular order.
    cmArray<std::uint32_t> findShort(cmROStringT digits) const;

private:
    /// One part of an open-addressing hash table; its size is a power of two. The slot of a hash depends on its short hash only,
    /// so that one table serves both lookups. Parts grow one at a time, so that no call takes long.
    struct Part {
        cmArray<std::uint32_t> slots;
        std::size_t used = 0;
    };

    static constexpr std::size_t blockHashes = 4096;

    static std::size_t partOf(std::uint32_t shortKey) { return shortKey >> 20; }
    static std::size_t home(const Part& part, std::uint32_t shortKey);
    static std::size_t next(const Part& part, std::size_t slot) { return (slot + 1) & (part.slots.size() - 1); }
    std::uint8_t* bytes(std::uint32_t id) const { return m_blocks[id / blockHashes].get() + id % blockHashes * m_hashSize; }
    /// The slot that holds the hash, or the free one for it.
    std::size_t slotOf(const Part& part, const std::uint8_t* hash) const;
    void grow(Part& part);
    void store(const std::uint8_t* hash);

    std::size_t m_hashSize = 0;                         ///< bytes of each hash; 0 before the first one
    cmArray<std::unique_ptr<std::uint8_t[]>> m_blocks;  ///< of blockHashes hashes each, by id
    std::uint32_t m_count = 1;
    cmArray<Part> m_parts;
};
