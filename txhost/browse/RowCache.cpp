#include "txhost/browse/RowCache.h"

#include <algorithm>
#include <utility>

namespace {

constexpr std::int32_t mostRows = 1 << 30;  // with which no sum of rows overflows

}  // namespace

bool RowCache::take(HistoryState state)
{
    state.rowCount = std::clamp(state.rowCount, 0, mostRows);
    const bool isOther = state.edition != m_state.edition;
    m_state = std::move(state);
    return isOther;
}

const HistoryRow* RowCache::row(std::int32_t number) const
{
    const std::int64_t place = std::int64_t{number} - m_rows.first;
    const bool isThere = m_rows.edition == m_state.edition && number >= 0 && number < m_state.rowCount && place >= 0
                         && place < static_cast<std::int64_t>(m_rows.rows.size());
    return isThere ? &m_rows.rows[static_cast<std::size_t>(place)] : nullptr;
}

std::int32_t RowCache::find(cmROStringT hash) const
{
    for (std::size_t i = 0; i < m_rows.rows.size(); ++i) {
        const std::int32_t number = m_rows.first + static_cast<std::int32_t>(i);
        if (m_rows.rows[i].hash == hash && row(number))
            return number;
    }
    return -1;
}

bool RowCache::hasAll(std::int32_t first, std::int32_t end) const
{
    end = std::min(end, m_state.rowCount);
    return first >= end || (row(first) && row(end - 1));
}

void RowCache::want(BrowseWants& wants, std::int32_t first, std::int32_t end)
{
    const std::int32_t firstBlock = std::max(0, first / blockRows - 1);
    const std::int32_t lastBlock = std::max(first, end - 1) / blockRows + 1;
    wants.firstRow = firstBlock * blockRows;
    wants.rowCount = (lastBlock + 1 - firstBlock) * blockRows;
}
