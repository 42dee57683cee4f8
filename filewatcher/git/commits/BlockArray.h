#pragma once

#include "common/cmArray.h"

#include <cstddef>
#include <memory>

/// An array that grows at its end without moving its elements, so that no call takes long. Elements are in large blocks: quicker
/// to index than a std::deque, whose blocks are small. For one thread at a time.
template <class T>
class BlockArray {
public:
    std::size_t size() const { return m_size; }
    const T& operator[](std::size_t index) const { return m_blocks[index / perBlock][index % perBlock]; }
    void push_back(const T& value)
    {
        if (m_size % perBlock == 0)
            m_blocks.push_back(std::make_unique_for_overwrite<T[]>(perBlock));
        m_blocks.back()[m_size++ % perBlock] = value;
    }

private:
    static constexpr std::size_t perBlock = 4096;

    cmArray<std::unique_ptr<T[]>> m_blocks;
    std::size_t m_size = 0;
};
