#pragma once

#include "common/cmArray.h"
#include "common/cmString.h"

#include <cstddef>
#include <memory>

/// Texts that never move and go together, kept in blocks. For one thread at a time.
class TextBlocks {
public:
    void clear() { *this = TextBlocks(); }

    /// A copy, valid until everything is cleared.
    cmROStringT keep(cmROStringT text)
    {
        char* const place = room(text.size());
        text.copy(place, text.size());
        return {place, text.size()};
    }

private:
    static constexpr std::size_t blockSize = 1 << 18;

    char* room(std::size_t size)
    {
        if (size > blockSize / 8)  // a block of its own; the one in use stays
            return m_blocks.emplace_back(std::make_unique_for_overwrite<char[]>(size)).get();
        if (size > m_left) {
            m_next = m_blocks.emplace_back(std::make_unique_for_overwrite<char[]>(blockSize)).get();
            m_left = blockSize;
        }
        char* const place = m_next;
        m_next += size;
        m_left -= size;
        return place;
    }

    cmArray<std::unique_ptr<char[]>> m_blocks;
    char* m_next = nullptr;
    std::size_t m_left = 0;
};
