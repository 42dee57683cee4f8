#include "txhost/LogRestriction.h"

#include "common/CommandLine.h"

#include <algorithm>

namespace {

// What git log takes, too, but changes its output. git also knows a long option by the beginning of its name.
constexpr cmROStringT outputOptions[] = {"--abbrev-commit",
                                         "--binary",
                                         "--cc",
                                         "--check",
                                         "--children",
                                         "--compact-summary",
                                         "--cumulative",
                                         "--date",
                                         "--decorate",
                                         "--dirstat",
                                         "--dirstat-by-file",
                                         "--format",
                                         "--graph",
                                         "--line-prefix",
                                         "--log-size",
                                         "--name-only",
                                         "--name-status",
                                         "--numstat",
                                         "--oneline",
                                         "--output",
                                         "--parents",
                                         "--patch",
                                         "--patch-with-raw",
                                         "--patch-with-stat",
                                         "--pretty",
                                         "--raw",
                                         "--remerge-diff",
                                         "--shortstat",
                                         "--stat",
                                         "--stat-count",
                                         "--stat-graph-width",
                                         "--stat-name-width",
                                         "--stat-width",
                                         "--summary",
                                         "--unified"};
constexpr cmROStringT shortOutputOptions[] = {"-L", "-U", "-X", "-c", "-p", "-u", "-z"};

bool changesOutput(cmROStringT word)
{
    constexpr std::size_t leastLength = 4;
    const cmROStringT name = word.substr(0, word.find('='));
    const auto isLong = [name](cmROStringT option) { return name.size() >= leastLength && option.starts_with(name); };
    const auto isShort = [word](cmROStringT option) { return word.starts_with(option); };
    return std::any_of(std::begin(outputOptions), std::end(outputOptions), isLong)
           || (!word.starts_with("--") && std::any_of(std::begin(shortOutputOptions), std::end(shortOutputOptions), isShort));
}

bool hasOpenQuote(const std::string& text)
{
    bool isOpen = false;
    for (std::size_t i = 0; i < text.size(); ++i)
        isOpen = isOpen != (text[i] == '"' && (i == 0 || text[i - 1] != '\\'));
    return isOpen;
}

}  // namespace

std::string complaintOfRestriction(const std::string& arguments)
{
    if (hasOpenQuote(arguments))
        return "A quote is open: " + arguments;
    for (const cmStringT& word : splitArguments(arguments)) {
        if (word == "--")
            break;
        if (changesOutput(word))
            return "It changes what git log writes: " + std::string(word.view());
    }
    return {};
}
