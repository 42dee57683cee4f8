#include "filewatcher/git/commits/CommitIds.h"

#include "common/cmHexDigits.h"
#include "filewatcher/git/commits/ShortHash.h"

#include <utility>

namespace {

constexpr std::size_t parts = 256;
constexpr std::size_t firstSlots = 16;  // of each part

}  // namespace

bool CommitHash::parse(cmROStringT text, CommitHash& hash)
{
    if (text.size() != digits)
        return false;
    for (std::size_t i = 0; i < hash.bytes.size(); ++i) {
        const int high = cmHexDigitValue(text[2 * i]);
        const int low = cmHexDigitValue(text[2 * i + 1]);
        if (high < 0 || low < 0)
            return false;
        hash.bytes[i] = static_cast<std::uint8_t>(high << 4 | low);
    }
    return true;
}

void CommitHash::write(char* place) const
{
    for (const std::uint8_t byte : bytes) {
        *place++ = cmHexDigits[byte >> 4];
        *place++ = cmHexDigits[byte & 15];
    }
}

cmStringT CommitHash::text() const
{
    char text[digits];
    write(text);
    return cmROStringT(text, digits);
}

CommitIds::CommitIds() : m_hashes(1), m_parts(parts, Part{cmArray<std::uint32_t>(firstSlots, none)}) {}

std::uint32_t CommitIds::intern(const CommitHash& hash)
{
    Part& part = m_parts[partOf(hash.shortKey())];
    std::size_t slot = slotOf(part, hash);
    if (part.slots[slot] != none)
        return part.slots[slot];
    if (part.used >= part.slots.size() / 3 * 2) {
        grow(part);
        slot = slotOf(part, hash);
    }
    ++part.used;
    part.slots[slot] = count();
    m_hashes.push_back(hash);
    return part.slots[slot];
}

std::uint32_t CommitIds::find(const CommitHash& hash) const
{
    const Part& part = m_parts[partOf(hash.shortKey())];
    return part.slots[slotOf(part, hash)];
}

cmArray<std::uint32_t> CommitIds::findShort(cmROStringT text) const
{
    cmArray<std::uint32_t> found;
    if (text.size() != shortHashLength)
        return found;
    std::uint32_t key = 0;
    for (const char c : text) {
        const int value = cmHexDigitValue(c);
        if (value < 0)
            return found;
        key = key << 4 | static_cast<std::uint32_t>(value);
    }
    const Part& part = m_parts[partOf(key)];
    for (std::size_t slot = home(part, key); part.slots[slot] != none; slot = next(part, slot)) {
        if (m_hashes[part.slots[slot]].shortKey() == key)
            found.push_back(part.slots[slot]);
    }
    return found;
}

std::size_t CommitIds::home(const Part& part, std::uint32_t shortKey)
{
    constexpr std::uint32_t spread = 0x9E3779B1;
    return shortKey * spread >> 8 & (part.slots.size() - 1);
}

std::size_t CommitIds::slotOf(const Part& part, const CommitHash& hash) const
{
    std::size_t slot = home(part, hash.shortKey());
    while (part.slots[slot] != none && m_hashes[part.slots[slot]] != hash)
        slot = next(part, slot);
    return slot;
}

void CommitIds::grow(Part& part)
{
    Part grown{cmArray<std::uint32_t>(part.slots.size() * 2, none), part.used};
    for (const std::uint32_t id : part.slots) {
        if (id != none)
            grown.slots[slotOf(grown, m_hashes[id])] = id;
    }
    part = std::move(grown);
}
