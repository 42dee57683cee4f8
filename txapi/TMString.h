#pragma once

#include "common/cmString.h"
#include "common/cmStringCatHelper.h"
#include "common/cmThinString.h"
#include "txapi/TXEXPORT.h"

#include <cstdint>

/// The editor's long string: `length` bytes, not necessarily closed by a NUL; owned by the editor.
struct TXLSTR {
    std::int32_t length;
    const char* text;
};

namespace tamarin {

/// The editor's string class: a thin wrapper around the common library's string. A null string is distinct from
/// an empty one. Not thread-safe, as any value.
class TXMODULE_API TMString {
public:
    TMString();
    TMString(const TMString& other);
    TMString(TMString&& other) noexcept;
    TMString(const char* text);  ///< null when `text` is null
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

    /// The byte at `index`, NUL when it is outside the string; so too the next three.
    char charAt(std::int64_t index) const;
    char operator[](std::int64_t index) const;
    char first_char() const;
    char last_char() const;

    const cmStringT& getCMString() const;
    /// The text, always closed by a NUL; valid until the string changes.
    const char* getCString() const;
    const unsigned char* getUCString() const;
    operator const cmStringT&() const;

    std::int64_t length() const;
    /// The length in 32 bits, at most the largest positive number.
    std::int32_t length32() const;
    bool isEmpty() const;
    bool isNotEmpty() const;
    bool isNull() const;
    bool isNotNull() const;

private:
    cmStringT m_text;
};

}  // namespace tamarin
