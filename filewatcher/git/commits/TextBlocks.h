#pragma once

#include "common/cmArray.h"
#include "common/cmString.h"

#include <cstddef>
#include <memory>

/// Keeps texts in large blocks. A text never moves and is freed with the object. For one thread at a time.
class TextBlocks {
public:
    /// Returns a copy that is valid as long as the object.
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
        if (size > blockSize / 8)  // gets a block of its own, so that little of the current one is wasted
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
    char* m_next = nullptr;  ///< the free part of the current block
    std::size_t m_left = 0;
};
