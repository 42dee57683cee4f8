#include "filewatcher/git/query/GitCommitText.h"

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
