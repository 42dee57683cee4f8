#include "filewatcher/git/query/GitCommitText.h"

#include "common/cmStringCatHelper.h"
#include "filewatcher/git/GitQuotedName.h"

#include <algorithm>

GitCommitText parseGitCommitText(cmROStringT output)
{
    GitCommitText text;
    std::size_t end = std::min(output.find('\0'), output.size());
    const cmROStringT message = output.substr(0, end);
    for (cmROStringT lines = message; !lines.empty();)
        text.message.push_back(cmTakeUntil(lines, '\n'));
    while (end < output.size()) {
        output.remove_prefix(end + 1);
        end = std::min(output.find('\0'), output.size());
        cmROStringT lines = output.substr(0, end);
        // Only a block that another one follows ends with the message: git repeats it for each parent of a merge.
        if (end < output.size() && lines.ends_with(message))
            lines.remove_suffix(message.size());
        while (!lines.empty()) {
            const cmROStringT line = cmTakeUntil(lines, '\n');
            if (!line.empty())
                text.files.push_back(gitNameOnLine(line));
        }
    }
    return text;
}

cmArray<cmArray<cmStringT>> parseFilesByParent(cmROStringT output, cmROStringT hash, const cmArray<cmStringT>& parents)
{
    const cmStringT heading = cmCat(hash) + " (from ";
    cmArray<cmArray<cmStringT>> files(parents.size());
    std::size_t parent = parents.size();  // none yet
    while (!output.empty()) {
        cmROStringT line = cmTakeUntil(output, '\n');
        if (line.starts_with(heading)) {
            line.remove_prefix(heading.length());
            parent = static_cast<std::size_t>(std::ranges::find(parents, cmStringT(cmTakeUntil(line, ')'))) - parents.begin());
        } else if (!line.empty() && parent < files.size()) {
            files[parent].push_back(gitNameOnLine(line));
        }
    }
    return files;
}
