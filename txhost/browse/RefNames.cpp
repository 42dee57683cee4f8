#include "txhost/browse/RefNames.h"

#include <algorithm>
#include <optional>

namespace {

/// The kind of a ref, whose name is cut to what users call it. Nothing for one that is not shown.
std::optional<RefKind> takeKind(cmROStringT& name)
{
    struct Place {
        cmROStringT prefix;
        RefKind kind;
    };
    for (const Place& place :
         {Place{"refs/heads/", RefKind::branch}, Place{"refs/remotes/", RefKind::branch}, Place{"refs/tags/", RefKind::tag}}) {
        if (!name.starts_with(place.prefix))
            continue;
        name.remove_prefix(place.prefix.size());
        return place.kind;
    }
    return name == "HEAD" ? std::optional(RefKind::head) : std::nullopt;
}

}  // namespace

cmArray<GitRefName> refNames(cmROStringT list)
{
    constexpr cmROStringT dereferenced = "^{}";
    cmArray<GitRefName> names;
    while (!list.empty()) {
        cmROStringT name = cmTakeUntil(list, '\n');
        const cmROStringT hash = cmTakeUntil(name, ' ');
        const std::optional<RefKind> kind = hash.empty() ? std::nullopt : takeKind(name);
        if (kind && name.ends_with(dereferenced) && !names.empty())
            names.back().hash = hash;  // follows the line of its tag
        else if (kind)
            names.push_back({*kind, name, hash});
    }
    std::stable_sort(names.begin(), names.end(), [](const GitRefName& a, const GitRefName& b) { return a.kind < b.kind; });
    return names;
}
