#include "common/cmString.h"

#include "common/cmThinString.h"

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <new>
#include <utility>

namespace {

char lowerAscii(char c)
{
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}

}  // namespace

cmStringT::cmStringT(const char* text)
{
    if (text)
        assign(text);
}

cmStringT::cmStringT(cmROStringT text)
{
    assign(text);
}

cmStringT::cmStringT(const cmThinStringT& text) : cmStringT(text.c_str()) {}

cmStringT::cmStringT(const cmStringT& other)
{
    if (!other.isNull())
        assign(other);
}

cmStringT::cmStringT(cmStringT&& other) noexcept
    : m_data(std::exchange(other.m_data, nullptr)), m_length(std::exchange(other.m_length, 0)),
      m_capacity(std::exchange(other.m_capacity, 0))
{
}

cmStringT::~cmStringT()
{
    std::free(m_data);
}

cmStringT& cmStringT::operator=(const cmStringT& other)
{
    if (this != &other) {
        cmStringT copy(other);
        *this = std::move(copy);
    }
    return *this;
}

cmStringT& cmStringT::operator=(cmStringT&& other) noexcept
{
    std::swap(m_data, other.m_data);
    std::swap(m_length, other.m_length);
    std::swap(m_capacity, other.m_capacity);
    return *this;
}

void cmStringT::assign(cmROStringT text)
{
    reserve(text.size());
    // memmove: `text` may be a part of this string. Then it fits, and reserve has not moved it.
    if (!text.empty())
        std::memmove(m_data, text.data(), text.size());
    m_length = text.size();
    m_data[m_length] = '\0';
}

void cmStringT::append(cmROStringT text)
{
    const std::size_t needed = m_length + text.size();
    if (needed > m_capacity || !m_data) {
        const bool own = m_data && std::less_equal<>()(m_data, text.data()) && std::less<>()(text.data(), m_data + m_length + 1);
        const std::size_t offset = own ? static_cast<std::size_t>(text.data() - m_data) : 0;
        reserve(std::max(needed, m_capacity + m_capacity / 2));
        if (own)
            text = {m_data + offset, text.size()};
    }
    if (!text.empty())
        std::memmove(m_data + m_length, text.data(), text.size());
    m_length = needed;
    m_data[m_length] = '\0';
}

void cmStringT::clear()
{
    assign({});
}

void cmStringT::truncate(std::size_t length)
{
    if (length < m_length) {
        m_length = length;
        m_data[m_length] = '\0';
    }
}

void cmStringT::reserve(std::size_t length)
{
    if (m_data && length <= m_capacity)
        return;
    auto* grown = static_cast<char*>(std::realloc(m_data, length + 1));
    if (!grown)
        throw std::bad_alloc();
    grown[m_length] = '\0';
    m_data = grown;
    m_capacity = length;
}

cmROStringT cmTakeUntil(cmROStringT& text, char end)
{
    const std::size_t length = std::min(text.find(end), text.size());
    const cmROStringT taken = text.substr(0, length);
    text.remove_prefix(std::min(length + 1, text.size()));
    return taken;
}

cmROStringT cmWithoutLineEnd(cmROStringT text)
{
    if (text.ends_with('\n'))
        text.remove_suffix(1);
    if (text.ends_with('\r'))
        text.remove_suffix(1);
    return text;
}

cmStringT cmLowerAscii(cmROStringT text)
{
    cmStringT lower(text);
    std::transform(text.begin(), text.end(), lower.data(), &lowerAscii);
    return lower;
}

bool cmEqualIgnoringCase(cmROStringT a, cmROStringT b)
{
    return std::equal(a.begin(), a.end(), b.begin(), b.end(), [](char x, char y) { return lowerAscii(x) == lowerAscii(y); });
}
