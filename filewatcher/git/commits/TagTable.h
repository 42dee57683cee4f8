#pragma once

#include "common/cmArray.h"
#include "common/cmString.h"
#include "filewatcher/git/commits/CommitStore.h"
#include "filewatcher/git/commits/TextBlocks.h"

#include <cstdint>

/// The tags of one load, by the commit that each leads to. A tag takes 24 bytes and the length of its name. For one thread at a
/// time.
class TagTable {
public:
    /// Reads git's list of tags: lines of the form "HASH refs/tags/NAME". Behind the line of a tag object, "HASH
    /// refs/tags/NAME^{}" has the object that it leads to in the end. Other lines, and one without its end, are ignored. Call
    /// once. The objects get their ids from `store`.
    void assign(cmROStringT output, CommitStore& store);

    /// The names of the tags that lead to the commit with this id, in git's order, which is by name.
    cmArray<cmStringT> namesAt(std::uint32_t id) const;

private:
    struct Tag {
        std::uint32_t id;
        cmROStringT name;
    };

    cmArray<Tag> m_tags;  ///< by id
    TextBlocks m_texts;
};
