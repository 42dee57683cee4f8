#include "filewatcher/bridge/ToolErrors.h"

#include <algorithm>

namespace {

/// The first line for which `matches` is true; an empty one when there is none.
template <typename Matches>
cmROStringT findLine(cmROStringT text, Matches matches)
{
    while (!text.empty()) {
        cmROStringT line = text.substr(0, text.find('\n'));
        text.remove_prefix(std::min(line.size() + 1, text.size()));
        if (line.ends_with('\r'))
            line.remove_suffix(1);
        if (matches(line))
            return line;
    }
    return {};
}

bool isFatal(cmROStringT line)
{
    return line.starts_with("fatal:");
}

bool isError(cmROStringT line)
{
    return line.starts_with("error:") || line.starts_with("BUG:");
}

bool isSvnError(cmROStringT line)
{
    constexpr cmROStringT form = "svn: E";
    return line.size() > form.size() && line.starts_with(form) && line[form.size()] >= '0' && line[form.size()] <= '9';
}

}  // namespace

bool hasFatalLine(cmROStringT errorOutput)
{
    return !findLine(errorOutput, isFatal).empty();
}

bool hasErrorLine(cmROStringT errorOutput)
{
    return !findLine(errorOutput, isError).empty();
}

bool hasSvnError(cmROStringT errorOutput)
{
    return !findLine(errorOutput, isSvnError).empty();
}

cmROStringT toolSentence(cmROStringT errorOutput)
{
    cmROStringT line = findLine(errorOutput, [](cmROStringT each) { return isFatal(each) || isSvnError(each); });
    if (line.empty())
        line = findLine(errorOutput, isError);
    return line.empty() ? findLine(errorOutput, [](cmROStringT each) { return !each.empty(); }) : line;
}
