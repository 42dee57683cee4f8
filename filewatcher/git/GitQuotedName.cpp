#include "filewatcher/git/GitQuotedName.h"

#include <algorithm>

namespace {

bool isOctal(char c)
{
    return c >= '0' && c <= '7';
}

/// Removes the rest of an escape, after its backslash, from the front of `text`, which is not empty. Returns its character.
char takeEscape(cmROStringT& text)
{
    if (text.size() >= 3 && std::all_of(text.begin(), text.begin() + 3, &isOctal)) {
        const int value = (text[0] - '0') * 64 + (text[1] - '0') * 8 + (text[2] - '0');
        text.remove_prefix(3);
        return static_cast<char>(value);
    }
    constexpr cmROStringT letters = "abtnvfr";
    constexpr cmROStringT characters = "\a\b\t\n\v\f\r";
    const char c = text.front();
    text.remove_prefix(1);
    const std::size_t index = letters.find(c);
    return index == cmROStringT::npos ? c : characters[index];
}

}  // namespace

cmStringT takeQuotedGitName(cmROStringT& text)
{
    cmStringT name("");
    text.remove_prefix(1);
    while (!text.empty() && text.front() != '"') {
        const char c = text.front();
        text.remove_prefix(1);
        name += c == '\\' && !text.empty() ? takeEscape(text) : c;
    }
    if (!text.empty())
        text.remove_prefix(1);
    return name;
}

cmStringT gitNameOnLine(cmROStringT line)
{
    return line.starts_with('"') ? takeQuotedGitName(line) : cmStringT(line);
}
