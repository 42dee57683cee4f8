#include "filewatcher/git/commits/TagTable.h"

#include <algorithm>

namespace {

constexpr cmROStringT tagPrefix = "refs/tags/";
constexpr cmROStringT peeledSuffix = "^{}";  // no name of a ref ends so

/// Whether `ref` is the name of `tag` with the suffix.
bool isPeeled(cmROStringT ref, cmROStringT tag)
{
    return ref.size() == tag.size() + peeledSuffix.size() && ref.starts_with(tag) && ref.ends_with(peeledSuffix);
}

}  // namespace

void TagTable::read(cmROStringT output)
{
    output = output.substr(0, output.rfind('\n') + 1);
    while (!output.empty()) {
        cmROStringT names = cmTakeUntil(output, '\n');
        cmROStringT hash = cmTakeUntil(names, ' ');
        cmROStringT peeled = output.substr(0, output.find('\n'));
        const cmROStringT peeledHash = cmTakeUntil(peeled, ' ');
        if (isPeeled(peeled, names)) {
            hash = peeledHash;
            cmTakeUntil(output, '\n');
        }
        hash = m_texts.keep(hash);
        while (!names.empty()) {
            cmROStringT name = cmTakeUntil(names, ' ');
            if (!names.empty())
                name.remove_suffix(1);  // what separates it from the next one
            if (name.starts_with(tagPrefix))
                m_tags.push_back({hash, m_texts.keep(name.substr(tagPrefix.size()))});
        }
    }
    std::sort(m_tags.begin(), m_tags.end());
}

cmArray<cmStringT> TagTable::namesAt(cmROStringT hash) const
{
    cmArray<cmStringT> names;
    for (auto tag = std::ranges::lower_bound(m_tags, hash, {}, &Tag::hash); tag != m_tags.end() && tag->hash == hash; ++tag)
        names.emplace_back(tag->name);
    return names;
}
