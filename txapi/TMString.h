#pragma once

#include "common/cmString.h"
#include "common/cmStringCatHelper.h"
#include "common/cmThinString.h"
#include "txapi/TXEXPORT.h"

#include <cstdint>

/// The editor's long string: `length` bytes, not necessarily followed by a NUL. The editor owns the text. A negative length
/// counts as 0.
struct TXLSTR {
    std::int32_t length;
    const char* text;
};

namespace tamarin {

/// The editor's string class: a thin wrapper around cmStringT. It holds bytes, by convention UTF-8. A null string is distinct
/// from an empty one: a default-constructed string is null, and appending makes it non-null. For one thread at a time.
class TXMODULE_API TMString {
public:
    TMString();
    TMString(const TMString& other);
    TMString(TMString&& other) noexcept;
    TMString(const char* text);  ///< a null string when `text` is null
    TMString(const cmStringT& text);
    ~TMString();

    TMString& operator=(const TMString& other);
    TMString& operator=(TMString&& other) noexcept;
    TMString& operator=(char character);
    TMString& operator=(const char* text);
    TMString& operator=(const TXLSTR& text);

    TMString& operator+=(const TMString& text);
    TMString& operator+=(char character);
    TMString& operator+=(const char* text);
    TMString& operator+=(const cmStringT& text);
    TMString& operator+=(cmROStringT text);
    TMString& operator+=(const cmThinStringT& text);
    TMString& operator+=(const cmStringCatHelperT& text);

    TMString operator+(const TMString& text) const;
    TMString operator+(char character) const;
    TMString operator+(const char* text) const;
    TMString operator+(const cmStringT& text) const;
    TMString operator+(cmROStringT text) const;
    TMString operator+(const cmThinStringT& text) const;
    TMString operator+(const cmStringCatHelperT& text) const;

    /// The byte at `index`, or NUL when `index` is outside the string. The next three do the same.
    char charAt(std::int64_t index) const;
    char operator[](std::int64_t index) const;
    char first_char() const;
    char last_char() const;

    /// The wrapped string; valid until this string changes or is destroyed.
    const cmStringT& getCMString() const;
    /// The text, always NUL-terminated; valid until this string changes or is destroyed. Never a null pointer.
    const char* getCString() const;
    /// The same bytes as unsigned characters.
    const unsigned char* getUCString() const;
    operator const cmStringT&() const;

    /// The length in bytes.
    std::int64_t length() const;
    /// The length in bytes, at most the largest 32-bit number.
    std::int32_t length32() const;
    /// Whether the length is 0, which a null string has too.
    bool isEmpty() const;
    bool isNotEmpty() const;
    bool isNull() const;
    bool isNotNull() const;

private:
    cmStringT m_text;
};

}  // namespace tamarin
