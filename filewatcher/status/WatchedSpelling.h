#pragma once

#include "common/cmArray.h"
#include "common/cmPath.h"
#include "common/cmString.h"

/// The spelling of a watched directory, which its files get in the editor's records: the editor opened them under it. Tools name
/// files by their real paths, or by a root in a spelling of its own. Text only, without a look at any file; any thread.
class WatchedSpelling {
public:
    /// `watched` is the directory as the editor named it, `real` its path without links, null when nobody knows it. When
    /// `watched` is not absolute every file keeps the name that the tool gave it.
    WatchedSpelling(cmROStringT watched, cmROStringT real, cmPathStyle style = cmNativePathStyle);

    /// Whether `directory` is the watched directory or holds it, in a spelling that is known.
    bool isBelow(cmROStringT directory) const;
    /// Makes files known that are named by way of `directory`, whose path without links is `real`.
    void addSpelling(cmROStringT directory, cmROStringT real);
    /// The path of `file`, which is absolute and in native separators: in the watched spelling when it is the watched directory
    /// or below it, otherwise unchanged.
    cmStringT respell(cmROStringT file) const;

private:
    /// What stands at the beginning of a file's path, and what replaces it.
    struct Prefix {
        cmStringT from;
        cmStringT to;
    };

    cmPathStyle m_style;
    cmStringT m_real;
    cmArray<Prefix> m_prefixes;  ///< empty, or the first replaces the watched directory by itself: on Windows the case may differ
};
