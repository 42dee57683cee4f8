#include "txhost/browse/NameChoice.h"

#include <algorithm>
#include <array>

namespace {

/// How well `text` fits `name`, both in lower case: the less, the better; `misfits` when it is not in it.
constexpr std::size_t misfits = 4;

std::size_t misfit(cmROStringT name, cmROStringT text)
{
    const std::size_t place = name.find(text);
    if (place == cmROStringT::npos)
        return misfits;
    if (place == 0)
        return name.size() == text.size() ? 0 : 1;
    return name[place - 1] == '/' ? 2 : 3;
}

}  // namespace

cmArray<cmStringT> namesLike(const cmArray<GitRefName>& names, cmROStringT text, std::size_t most)
{
    const cmStringT wanted = cmLowerAscii(text);
    std::array<cmArray<cmStringT>, misfits> found;
    for (const GitRefName& name : names) {
        const std::size_t group = misfit(cmLowerAscii(name.name), wanted);
        if (group < misfits && found[group].size() < most)
            found[group].push_back(name.name);
    }
    cmArray<cmStringT> best;
    for (const cmArray<cmStringT>& group : found)
        best.insert(best.end(), group.begin(), group.end());
    best.resize(std::min(best.size(), most));
    return best;
}

cmStringT hashOfName(const cmArray<GitRefName>& names, cmROStringT text)
{
    const auto found = std::find_if(names.begin(), names.end(), [text](const GitRefName& name) {
        return name.name == text || (name.kind == RefKind::head && (text == "@" || text == "HEAD"));
    });
    return found == names.end() ? cmStringT() : found->hash;
}
