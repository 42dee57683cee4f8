#pragma once

#include "txhost/browse/BrowseData.h"

/// At most `most` of the names that have `text` in them, those that it fits best first: the name itself, then names that begin
/// with it, then names of which a part behind a slash does, then others. Upper and lower case are the same.
cmArray<cmStringT> namesLike(const cmArray<GitRefName>& names, cmROStringT text, std::size_t most);
/// The hash of the commit with this name; null when there is none. "HEAD" and "@" name the head.
cmStringT hashOfName(const cmArray<GitRefName>& names, cmROStringT text);
