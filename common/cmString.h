#pragma once

#include <compare>
#include <cstddef>
#include <functional>
#include <string_view>

class cmThinStringT;

/// A view of bytes that another object owns.
using cmROStringT = std::string_view;

/// The library's byte string: length-counted, UTF-8 by convention, any byte allowed, always NUL-terminated. A null string (never
/// assigned) is distinct from an empty one. Memory grows through realloc, which moves the pages of a large string instead of
/// copying them. One thread at a time.
class cmStringT {
public:
    cmStringT() = default;
    cmStringT(const char* text);  ///< null when `text` is null
    cmStringT(cmROStringT text);
    explicit cmStringT(const cmThinStringT& text);
    cmStringT(const cmStringT& other);
    cmStringT(cmStringT&& other) noexcept;
    ~cmStringT();
    cmStringT& operator=(const cmStringT& other);
    cmStringT& operator=(cmStringT&& other) noexcept;

    const char* c_str() const { return m_data ? m_data : ""; }
    char* data() { return m_data; }
    std::size_t length() const { return m_length; }
    bool isEmpty() const { return m_length == 0; }
    bool isNull() const { return m_data == nullptr; }
    cmROStringT view() const { return {c_str(), m_length}; }
    operator cmROStringT() const { return view(); }
    char operator[](std::size_t index) const { return m_data[index]; }

    void assign(cmROStringT text);
    void append(cmROStringT text);
    cmStringT& operator+=(cmROStringT text)
    {
        append(text);
        return *this;
    }
    cmStringT& operator+=(char character)
    {
        append({&character, 1});
        return *this;
    }

    /// Makes the string empty, not null. Keeps the memory.
    void clear();
    /// Keeps the first `length` bytes. No effect on a shorter string.
    void truncate(std::size_t length);
    void reserve(std::size_t length);

    friend bool operator==(const cmStringT& a, const cmStringT& b) { return a.view() == b.view(); }
    friend bool operator==(const cmStringT& a, cmROStringT b) { return a.view() == b; }
    friend bool operator==(const cmStringT& a, const char* b) { return a.view() == b; }
    friend std::strong_ordering operator<=>(const cmStringT& a, const cmStringT& b) { return a.view() <=> b.view(); }

private:
    char* m_data = nullptr;
    std::size_t m_length = 0;
    std::size_t m_capacity = 0;  ///< without the terminating NUL
};

template <>
struct std::hash<cmStringT> {
    std::size_t operator()(const cmStringT& text) const noexcept { return std::hash<cmROStringT>()(text.view()); }
};

/// Removes the text before the first `end` from `text`, and `end` with it, and returns it. Takes all of `text` when there is no
/// `end`.
cmROStringT cmTakeUntil(cmROStringT& text, char end);
/// `text` without a trailing line feed, and then without a trailing carriage return.
cmROStringT cmWithoutLineEnd(cmROStringT text);
/// `text` with its ASCII letters in lower case.
cmStringT cmLowerAscii(cmROStringT text);
/// Whether two texts are equal but for the case of ASCII letters.
bool cmEqualIgnoringCase(cmROStringT a, cmROStringT b);
