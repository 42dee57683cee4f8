#include "txhost/HunkText.h"

#include <cstdint>
#include <string>

std::size_t parentsOfHunk(const Json& hunk)
{
    return hunk.contains("oldRanges") ? hunk.at("oldRanges").size() : 1;
}

cmStringT hunkHeader(const Json& hunk)
{
    const auto range = [](const char* sign, const Json& start, const Json& count) {
        return sign + std::to_string(start.get<std::int64_t>()) + "," + std::to_string(count.get<std::int64_t>());
    };
    std::string signs = "@@";
    std::string text;
    if (hunk.contains("oldRanges")) {
        signs = std::string(hunk.at("oldRanges").size() + 1, '@');
        for (const Json& old : hunk.at("oldRanges"))
            text += range(" -", old.at("start"), old.at("count"));
    } else {
        text = range(" -", hunk.at("oldStart"), hunk.at("oldCount"));
    }
    return cmROStringT(signs + text + range(" +", hunk.at("newStart"), hunk.at("newCount")) + " " + signs);
}

char kindOfLine(cmROStringT line, std::size_t parents)
{
    const cmROStringT kinds = line.substr(0, parents);
    for (const char kind : {'+', '-', '\\'}) {
        if (kinds.find(kind) != cmROStringT::npos)
            return kind;
    }
    return ' ';
}
