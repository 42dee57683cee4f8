#pragma once

#include "common/cmString.h"

#include <cstring>
#include <memory>

/// An immutable NUL-terminated text in the size of one pointer, for records that are kept in great numbers.
class cmThinStringT {
public:
    cmThinStringT() = default;
    explicit cmThinStringT(cmROStringT text) : m_text(new char[text.size() + 1])
    {
        text.copy(m_text.get(), text.size());
        m_text[text.size()] = '\0';
    }

    /// Null for a default-constructed string.
    const char* c_str() const { return m_text.get(); }
    std::size_t length() const { return m_text ? std::strlen(m_text.get()) : 0; }

private:
    std::unique_ptr<char[]> m_text;
};
