#pragma once

#include <compare>
#include <cstddef>
#include <functional>
#include <string_view>

class cmThinStringT;

/// A read-only run of bytes that somebody else owns.
using cmROStringT = std::string_view;

/// The library's byte string: length-counted, by convention UTF-8, any byte allowed, always followed by a NUL.
/// A null string (never assigned) is distinct from an empty one. Memory grows through realloc, so that
/// collecting hundreds of megabytes moves pages instead of copying them. Not thread-safe, as any value.
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

    /// Makes the string empty, not null; keeps the memory.
    void clear();
    /// Cuts the string to its first `length` bytes; no effect when it is shorter.
    void truncate(std::size_t length);
    void reserve(std::size_t length);

    friend bool operator==(const cmStringT& a, const cmStringT& b) { return a.view() == b.view(); }
    friend bool operator==(const cmStringT& a, cmROStringT b) { return a.view() == b; }
    friend bool operator==(const cmStringT& a, const char* b) { return a.view() == b; }
    friend std::strong_ordering operator<=>(const cmStringT& a, const cmStringT& b) { return a.view() <=> b.view(); }

private:
    char* m_data = nullptr;
    std::size_t m_length = 0;
    std::size_t m_capacity = 0;  ///< without the closing NUL
};

template <>
struct std::hash<cmStringT> {
    std::size_t operator()(const cmStringT& text) const noexcept { return std::hash<cmROStringT>()(text.view()); }
};

/// What stands before the first `end` in `text`, all when there is none; both are taken out of it.
cmROStringT cmTakeUntil(cmROStringT& text, char end);
/// `text` without one trailing line feed and then one trailing carriage return.
cmROStringT cmWithoutLineEnd(cmROStringT text);
/// `text` in which ASCII letters are lower case.
cmStringT cmLowerAscii(cmROStringT text);
/// Whether two texts differ in the case of ASCII letters at most.
bool cmEqualIgnoringCase(cmROStringT a, cmROStringT b);
