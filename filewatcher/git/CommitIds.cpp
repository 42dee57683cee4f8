#include "filewatcher/git/CommitIds.h"

#include <bit>

namespace {

constexpr std::size_t hashDigits = 40;
constexpr std::size_t firstSlots = 1024;

/// Of one digit; -1 for what is none.
int digitValue(char c)
{
    if (c >= '0' && c <= '9')
        return c - '0';
    if (c >= 'a' && c <= 'f')
        return c - 'a' + 10;
    return c >= 'A' && c <= 'F' ? c - 'A' + 10 : -1;
}

}  // namespace

bool CommitHash::parse(cmROStringT digits, CommitHash& hash)
{
    if (digits.size() != hashDigits)
        return false;
    for (std::size_t i = 0; i < hash.bytes.size(); ++i) {
        const int high = digitValue(digits[2 * i]);
        const int low = digitValue(digits[2 * i + 1]);
        if (high < 0 || low < 0)
            return false;
        hash.bytes[i] = static_cast<std::uint8_t>(high << 4 | low);
    }
    return true;
}

void CommitHash::write(char* digits) const
{
    constexpr char names[] = "0123456789abcdef";
    for (const std::uint8_t byte : bytes) {
        *digits++ = names[byte >> 4];
        *digits++ = names[byte & 15];
    }
}

cmStringT CommitHash::text() const
{
    char digits[hashDigits];
    write(digits);
    return cmROStringT(digits, hashDigits);
}

void CommitIds::clear()
{
    m_hashes = cmArray<CommitHash>(1);
    m_slots = cmArray<std::uint32_t>(firstSlots, none);
}

std::uint32_t CommitIds::intern(const CommitHash& hash)
{
    std::size_t slot = slotOf(hash);
    if (m_slots[slot] != none)
        return m_slots[slot];
    if (m_hashes.size() > m_slots.size() / 3 * 2) {
        grow();
        slot = slotOf(hash);
    }
    m_slots[slot] = count();
    m_hashes.push_back(hash);
    return m_slots[slot];
}

std::uint32_t CommitIds::find(const CommitHash& hash) const
{
    return m_slots[slotOf(hash)];
}

cmArray<std::uint32_t> CommitIds::findShort(cmROStringT digits) const
{
    cmArray<std::uint32_t> found;
    std::uint32_t key = 0;
    for (const char c : digits) {
        const int value = digitValue(c);
        if (value < 0 || digits.size() != shortLength)
            return found;
        key = key << 4 | static_cast<std::uint32_t>(value);
    }
    for (std::size_t slot = home(key); m_slots[slot] != none; slot = next(slot)) {
        if (m_hashes[m_slots[slot]].shortKey() == key)
            found.push_back(m_slots[slot]);
    }
    return found;
}

std::size_t CommitIds::home(std::uint32_t shortKey) const
{
    constexpr std::uint32_t spread = 0x9E3779B1;
    return shortKey * spread >> (32 - std::countr_zero(m_slots.size()));
}

std::size_t CommitIds::slotOf(const CommitHash& hash) const
{
    std::size_t slot = home(hash.shortKey());
    while (m_slots[slot] != none && m_hashes[m_slots[slot]] != hash)
        slot = next(slot);
    return slot;
}

void CommitIds::grow()
{
    m_slots = cmArray<std::uint32_t>(m_slots.size() * 2, none);
    for (std::uint32_t id = workingCopy + 1; id < count(); ++id) {
        std::size_t slot = home(m_hashes[id].shortKey());
        while (m_slots[slot] != none)
            slot = next(slot);
        m_slots[slot] = id;
    }
}
