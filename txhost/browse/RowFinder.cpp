#include "txhost/browse/RowFinder.h"

#include <utility>

void RowFinder::start(Purpose purpose, SearchKind kind, cmStringT text, std::int32_t from, bool backwards)
{
    m_purpose = purpose;
    m_search = RowSearch{++m_number, kind, std::move(text), from, backwards};
}

void RowFinder::restart()
{
    if (m_search)
        m_search->number = ++m_number;
}

bool RowFinder::take(const RowFound& found)
{
    const bool isAnswer = m_search && found.number == m_search->number;
    if (isAnswer)
        m_search.reset();
    return isAnswer;
}
