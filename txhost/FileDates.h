#pragma once

#include "common/cmArray.h"
#include "common/cmDictionary.h"
#include "common/cmFile.h"
#include "txhost/Host.h"

#include <cstdint>
#include <set>

/// A file's date as the module reports it.
struct FileDate {
    cmUTCTime time = 0;  ///< time of last modification; 0: there is no such file
    bool readOnly = false;
    bool operator==(const FileDate&) const = default;
};

/// The answer of one reload check. A path that is in neither list was not answered within the budget.
struct FileDates {
    cmSortedDictionary<cmStringT, FileDate> known;
    std::set<cmStringT> slow;  ///< files whose dates take too long to read; the module does not check them again
};

/// Asks the module for the dates of files (absolute paths) and waits at most `budgetMs` milliseconds for them. Throws HostError
/// when the module refuses.
FileDates askFileDates(Host& host, const cmArray<cmStringT>& paths, std::int32_t budgetMs);

/// The files as the editor would name them: absolute, without "." and "..". They need not exist. Throws UsageError for an empty
/// name.
cmArray<cmStringT> absolutePaths(const std::vector<std::string>& named);

/// Local time with milliseconds; "-" for 0.
cmStringT fileTimeText(cmUTCTime time);
