#include "filewatcher/git/commits/CommitIds.h"

#include "common/cmHexDigits.h"
#include "filewatcher/git/commits/ShortHash.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <utility>

namespace {

constexpr std::size_t parts = 256;
constexpr std::size_t firstSlots = 16;  // of each part
constexpr std::size_t sha1Size = 20;
constexpr std::size_t sha256Size = CommitIds::mostDigits / 2;

/// A hash in binary.
struct Hash {
    std::array<std::uint8_t, sha256Size> bytes;
    std::size_t size;
};

/// Returns false unless `digits` consists of exactly as many hexadecimal digits as a hash has.
bool parse(cmROStringT digits, Hash& hash)
{
    if (digits.size() != 2 * sha1Size && digits.size() != 2 * sha256Size)
        return false;
    hash.size = digits.size() / 2;
    for (std::size_t i = 0; i < hash.size; ++i) {
        const int high = cmHexDigitValue(digits[2 * i]);
        const int low = cmHexDigitValue(digits[2 * i + 1]);
        if (high < 0 || low < 0)
            return false;
        hash.bytes[i] = static_cast<std::uint8_t>(high << 4 | low);
    }
    return true;
}

/// The number that the short hash (seven digits) stands for.
std::uint32_t shortKey(const std::uint8_t* bytes)
{
    return static_cast<std::uint32_t>(bytes[0] << 20 | bytes[1] << 12 | bytes[2] << 4 | bytes[3] >> 4);
}

}  // namespace

CommitIds::CommitIds() : m_parts(parts, Part{cmArray<std::uint32_t>(firstSlots, none)}) {}

cmROStringT CommitIds::write(std::uint32_t id, char* place) const
{
    if (id == workingCopy)
        return {};
    const std::uint8_t* const hash = bytes(id);
    for (std::size_t i = 0; i < m_hashSize; ++i) {
        place[2 * i] = cmHexDigits[hash[i] >> 4];
        place[2 * i + 1] = cmHexDigits[hash[i] & 15];
    }
    return {place, 2 * m_hashSize};
}

cmStringT CommitIds::text(std::uint32_t id) const
{
    char place[mostDigits];
    return write(id, place);
}

std::uint32_t CommitIds::intern(cmROStringT digits)
{
    Hash hash;
    if (!parse(digits, hash) || (m_hashSize != 0 && hash.size != m_hashSize))
        return none;
    m_hashSize = hash.size;
    Part& part = m_parts[partOf(shortKey(hash.bytes.data()))];
    std::size_t slot = slotOf(part, hash.bytes.data());
    if (part.slots[slot] != none)
        return part.slots[slot];
    if (part.used >= part.slots.size() / 3 * 2) {
        grow(part);
        slot = slotOf(part, hash.bytes.data());
    }
    store(hash.bytes.data());
    ++part.used;
    part.slots[slot] = m_count;
    return m_count++;
}

std::uint32_t CommitIds::find(cmROStringT digits) const
{
    Hash hash;
    if (!parse(digits, hash) || hash.size != m_hashSize)
        return none;
    const Part& part = m_parts[partOf(shortKey(hash.bytes.data()))];
    return part.slots[slotOf(part, hash.bytes.data())];
}

cmArray<std::uint32_t> CommitIds::findShort(cmROStringT digits) const
{
    cmArray<std::uint32_t> found;
    if (digits.size() != shortHashLength)
        return found;
    std::uint32_t key = 0;
    for (const char c : digits) {
        const int value = cmHexDigitValue(c);
        if (value < 0)
            return found;
        key = key << 4 | static_cast<std::uint32_t>(value);
    }
    const Part& part = m_parts[partOf(key)];
    for (std::size_t slot = home(part, key); part.slots[slot] != none; slot = next(part, slot)) {
        if (shortKey(bytes(part.slots[slot])) == key)
            found.push_back(part.slots[slot]);
    }
    return found;
}

std::size_t CommitIds::home(const Part& part, std::uint32_t shortKey)
{
    constexpr std::uint32_t spread = 0x9E3779B1;
    return shortKey * spread >> 8 & (part.slots.size() - 1);
}

std::size_t CommitIds::slotOf(const Part& part, const std::uint8_t* hash) const
{
    std::size_t slot = home(part, shortKey(hash));
    while (part.slots[slot] != none && std::memcmp(bytes(part.slots[slot]), hash, m_hashSize) != 0)
        slot = next(part, slot);
    return slot;
}

void CommitIds::grow(Part& part)
{
    Part grown{cmArray<std::uint32_t>(part.slots.size() * 2, none), part.used};
    for (const std::uint32_t id : part.slots) {
        if (id != none)
            grown.slots[slotOf(grown, bytes(id))] = id;
    }
    part = std::move(grown);
}

void CommitIds::store(const std::uint8_t* hash)
{
    if (m_count / blockHashes == m_blocks.size())
        m_blocks.push_back(std::make_unique_for_overwrite<std::uint8_t[]>(blockHashes * m_hashSize));
    std::copy_n(hash, m_hashSize, bytes(m_count));
}
