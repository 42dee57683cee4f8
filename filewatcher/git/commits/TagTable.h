#pragma once

#include "common/cmArray.h"
#include "common/cmString.h"
#include "filewatcher/git/commits/TextBlocks.h"

#include <tuple>

/// The tags of one load, by the hash of the commit that each leads to. A tag takes 32 bytes, its hash and its name. Needs no
/// commits, so that it is built without the lock that guards them. For one thread at a time.
class TagTable {
public:
    /// Reads git's list of tags: lines of the form "HASH refs/tags/NAME". Behind the line of a tag object, "HASH
    /// refs/tags/NAME^{}" has the object that it leads to in the end. Or lines of its log in the format "%H %D": "HASH tag:
    /// refs/tags/NAME, tag: refs/tags/NAME". Other lines, and one without its end, are ignored. Call once.
    void read(cmROStringT output);

    /// The names of the tags that lead to the commit with this hash, as git writes it, by name.
    cmArray<cmStringT> namesAt(cmROStringT hash) const;

private:
    struct Tag {
        cmROStringT hash;
        cmROStringT name;
        friend bool operator<(const Tag& a, const Tag& b) { return std::tie(a.hash, a.name) < std::tie(b.hash, b.name); }
    };

    cmArray<Tag> m_tags;  ///< by hash, then by name
    TextBlocks m_texts;
};
