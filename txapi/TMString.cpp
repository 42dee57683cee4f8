#include "txapi/TMString.h"

#include <algorithm>
#include <limits>
#include <utility>

namespace tamarin {

TMString::TMString() = default;
TMString::TMString(const TMString& other) = default;
TMString::TMString(TMString&& other) noexcept = default;
TMString::TMString(const char* text) : m_text(text) {}
TMString::TMString(const cmStringT& text) : m_text(text) {}
TMString::~TMString() = default;

TMString& TMString::operator=(const TMString& other) = default;
TMString& TMString::operator=(TMString&& other) noexcept = default;

TMString& TMString::operator=(char character)
{
    m_text.assign({&character, 1});
    return *this;
}

TMString& TMString::operator=(const char* text)
{
    m_text = cmStringT(text);
    return *this;
}

TMString& TMString::operator=(const TXLSTR& text)
{
    m_text.assign({text.text, static_cast<std::size_t>(std::max(text.length, 0))});
    return *this;
}

TMString& TMString::operator+=(const TMString& text)
{
    return *this += text.m_text.view();
}

TMString& TMString::operator+=(char character)
{
    m_text += character;
    return *this;
}

TMString& TMString::operator+=(const char* text)
{
    return *this += cmROStringT(text ? text : "");
}

TMString& TMString::operator+=(const cmStringT& text)
{
    return *this += text.view();
}

TMString& TMString::operator+=(cmROStringT text)
{
    m_text.append(text);
    return *this;
}

TMString& TMString::operator+=(const cmThinStringT& text)
{
    return *this += text.c_str();
}

TMString& TMString::operator+=(const cmStringCatHelperT& text)
{
    return *this += cmStringT(text);
}

TMString TMString::operator+(const TMString& text) const
{
    return TMString(*this) += text;
}

TMString TMString::operator+(char character) const
{
    return TMString(*this) += character;
}

TMString TMString::operator+(const char* text) const
{
    return TMString(*this) += text;
}

TMString TMString::operator+(const cmStringT& text) const
{
    return TMString(*this) += text;
}

TMString TMString::operator+(cmROStringT text) const
{
    return TMString(*this) += text;
}

TMString TMString::operator+(const cmThinStringT& text) const
{
    return TMString(*this) += text;
}

TMString TMString::operator+(const cmStringCatHelperT& text) const
{
    return TMString(*this) += text;
}

char TMString::charAt(std::int64_t index) const
{
    return index >= 0 && index < length() ? m_text[static_cast<std::size_t>(index)] : '\0';
}

char TMString::operator[](std::int64_t index) const
{
    return charAt(index);
}

char TMString::first_char() const
{
    return charAt(0);
}

char TMString::last_char() const
{
    return charAt(length() - 1);
}

const cmStringT& TMString::getCMString() const
{
    return m_text;
}

const char* TMString::getCString() const
{
    return m_text.c_str();
}

const unsigned char* TMString::getUCString() const
{
    return reinterpret_cast<const unsigned char*>(m_text.c_str());
}

TMString::operator const cmStringT&() const
{
    return m_text;
}

std::int64_t TMString::length() const
{
    return static_cast<std::int64_t>(m_text.length());
}

std::int32_t TMString::length32() const
{
    return static_cast<std::int32_t>(std::min<std::int64_t>(length(), std::numeric_limits<std::int32_t>::max()));
}

bool TMString::isEmpty() const
{
    return m_text.isEmpty();
}

bool TMString::isNotEmpty() const
{
    return !m_text.isEmpty();
}

bool TMString::isNull() const
{
    return m_text.isNull();
}

bool TMString::isNotNull() const
{
    return !m_text.isNull();
}

}  // namespace tamarin
