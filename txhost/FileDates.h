#pragma once

#include "common/CMFD_ITEM.h"
#include "common/cmArray.h"
#include "common/cmDictionary.h"
#include "txhost/Host.h"

#include <cstdint>

/// What the module tells of a file's date.
struct FileDate {
    cmUTCTime time = 0;  ///< 0: there is no such file
    bool readOnly = false;
    bool operator==(const FileDate&) const = default;
};

/// What came of asking for dates, by path.
struct FileDates {
    cmSortedDictionary<cmStringT, FileDate> known;
    cmArray<cmStringT> slow;  ///< too slow to be asked again
};

/// Asks the module for the dates of files (absolute paths) and waits at most `budgetMs` for them.
FileDates askFileDates(Host& host, const cmArray<cmStringT>& paths, std::int32_t budgetMs);

/// The files as the editor would name them: absolute, without . and ... They need not exist.
cmArray<cmStringT> absolutePaths(const std::vector<std::string>& named);

/// Local time to the millisecond; "-" for no time.
cmStringT fileTimeText(cmUTCTime time);
