#include "filewatcher/status/GitPorcelain.h"

#include "filewatcher/git/GitQuotedName.h"

#include <algorithm>

namespace {

constexpr std::size_t pathColumn = 3;
constexpr cmROStringT renameArrow = " -> ";

/// Removes one name, quoted or not, from the front of `text` and returns it. An unquoted name holds no blank, so it ends at
/// the arrow of a rename.
cmStringT takeName(cmROStringT& text)
{
    if (text.starts_with('"'))
        return takeQuotedGitName(text);
    const std::size_t end = std::min(text.find(renameArrow), text.size());
    cmStringT name(text.substr(0, end));
    text.remove_prefix(end);
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
    while (output.find('\n') != cmROStringT::npos) {
        GitPorcelainEntry entry;
        if (parseLine(cmTakeUntil(output, '\n'), entry))
            entries.push_back(std::move(entry));
    }
    return entries;
}
