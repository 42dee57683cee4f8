#include "filewatcher/GitPorcelain.h"

#include <algorithm>

namespace {

constexpr std::size_t pathColumn = 3;
constexpr cmROStringT renameArrow = " -> ";

bool isOctal(char c)
{
    return c >= '0' && c <= '7';
}

/// Takes one escape, its backslash gone already, from the front of `text`.
char takeEscape(cmROStringT& text)
{
    if (text.size() >= 3 && std::all_of(text.begin(), text.begin() + 3, &isOctal)) {
        const int value = (text[0] - '0') * 64 + (text[1] - '0') * 8 + (text[2] - '0');
        text.remove_prefix(3);
        return static_cast<char>(value);
    }
    constexpr cmROStringT letters = "abtnvfr";
    constexpr cmROStringT meanings = "\a\b\t\n\v\f\r";
    const char c = text.front();
    text.remove_prefix(1);
    const std::size_t index = letters.find(c);
    return index == cmROStringT::npos ? c : meanings[index];
}

/// Takes one name, quoted or not, from the front of `text`. An unquoted one ends at the arrow of a rename: git quotes
/// every name that holds a blank.
cmStringT takeName(cmROStringT& text)
{
    cmStringT name("");
    if (!text.starts_with('"')) {
        const std::size_t end = std::min(text.find(renameArrow), text.size());
        name = cmStringT(text.substr(0, end));
        text.remove_prefix(end);
        return name;
    }
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

bool parseLine(cmROStringT line, GitPorcelainEntry& entry)
{
    if (line.size() <= pathColumn || line[2] != ' ')
        return false;
    entry.indexState = line[0];
    entry.workTreeState = line[1];
    line.remove_prefix(pathColumn);
    entry.path = takeName(line);
    if (line.starts_with(renameArrow)) {
        line.remove_prefix(renameArrow.size());
        entry.path = takeName(line);
    }
    return true;
}

}  // namespace

cmArray<GitPorcelainEntry> parseGitPorcelain(cmROStringT output)
{
    cmArray<GitPorcelainEntry> entries;
    while (!output.empty()) {
        const std::size_t end = std::min(output.find('\n'), output.size());
        GitPorcelainEntry entry;
        if (parseLine(output.substr(0, end), entry))
            entries.push_back(std::move(entry));
        output.remove_prefix(std::min(end + 1, output.size()));
    }
    return entries;
}
