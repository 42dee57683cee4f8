#include "txhost/browse/AboutColumns.h"

namespace {

constexpr std::size_t leastWidthForDate = 60;
constexpr std::size_t leastWidthForAuthor = 80;
constexpr std::size_t authorWidth = 18;
constexpr std::size_t dateWidth = 16;  // without the seconds
constexpr std::size_t gap = 2;         // in front of each

}  // namespace

AboutColumns::AboutColumns(std::size_t width)
    : m_author(width >= leastWidthForAuthor ? gap + authorWidth : 0), m_date(width >= leastWidthForDate ? gap + dateWidth : 0)
{
}

std::size_t AboutColumns::width() const
{
    return m_author + m_date;
}

void AboutColumns::draw(StyledLine& line, cmROStringT author, const GitDateTime& date, const TextStyle& style) const
{
    if (m_author) {
        line.padTo(width() - gap);
        line.add(author, style, authorWidth);
    }
    if (m_date) {
        line.padTo(dateWidth);
        line.add(date.text().view().substr(0, dateWidth), style);
    }
}
