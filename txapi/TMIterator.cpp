#include "txapi/TMIterator.h"

namespace tamarin {

TMIterator::TMIterator() = default;
TMIterator::TMIterator(const TMIterator& other) = default;
TMIterator::~TMIterator() = default;
TMIterator& TMIterator::operator=(const TMIterator& other) = default;

void TMIterator::reset()
{
    if (m_levels.empty())
        return;
    const TXHVAR outermost = m_levels.front().container;
    clearStack();
    pushStack(outermost);
}

std::int32_t TMIterator::pushStack(TXHVAR container)
{
    if (container == 0)
        return -1;
    m_levels.push_back({container, 0, {}});
    return 0;
}

std::int32_t TMIterator::popStack()
{
    if (m_levels.empty())
        return -1;
    m_levels.pop_back();
    return 0;
}

std::int32_t TMIterator::clearStack()
{
    m_levels.clear();
    return 0;
}

std::int32_t TMIterator::copyStack(const TMIterator& other)
{
    if (this != &other)
        m_levels = other.m_levels;
    return 0;
}

TMIteratorLevel* TMIterator::top()
{
    return m_levels.empty() ? nullptr : &m_levels.back();
}

}  // namespace tamarin
