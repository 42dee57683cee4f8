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

void TagTable::assign(cmROStringT output, CommitStore& store)
{
    output = output.substr(0, output.rfind('\n') + 1);
    while (!output.empty()) {
        cmROStringT line = cmTakeUntil(output, '\n');
        cmROStringT hash = cmTakeUntil(line, ' ');
        cmROStringT peeled = output.substr(0, output.find('\n'));
        const cmROStringT peeledHash = cmTakeUntil(peeled, ' ');
        if (isPeeled(peeled, line)) {
            hash = peeledHash;
            cmTakeUntil(output, '\n');
        }
        if (!line.starts_with(tagPrefix))
            continue;
        const std::uint32_t id = store.intern(hash);
        if (id != CommitStore::none)
            m_tags.push_back({id, m_texts.keep(line.substr(tagPrefix.size()))});
    }
    std::ranges::stable_sort(m_tags, {}, &Tag::id);
}

cmArray<cmStringT> TagTable::namesAt(std::uint32_t id) const
{
    cmArray<cmStringT> names;
    for (auto tag = std::ranges::lower_bound(m_tags, id, {}, &Tag::id); tag != m_tags.end() && tag->id == id; ++tag)
        names.emplace_back(tag->name);
    return names;
}
