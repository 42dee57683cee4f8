#pragma once

#include "txhost/FileDates.h"
#include "txhost/StatusPoll.h"

#include <cstddef>
#include <functional>
#include <set>
#include <unordered_set>

/// Prints what `watch` sees: each change once, with the time. What the first answer about a directory tells is printed as well,
/// but is no change.
class ChangePrinter {
public:
    /// `onChange` is called for each change, after its line, with the path of the file or directory.
    ChangePrinter(bool json, std::function<void(const cmStringT& path)> onChange);

    /// Prints changed dates. The first dates of a file are only stored.
    void show(const FileDates& dates);
    /// Prints what a pass has changed: its files, its failure or that this is over, whether its directory is in a repository, and
    /// whether it is there.
    void show(const PassAnswer& answer);
    /// Stores that there is no such file: its first date tells that it was created.
    void noteMissing(const cmStringT& file) { m_dates.known[file] = {}; }
    /// Prints that a directory is there, which was not at first.
    void showFound(const WatchedDirectory& directory);
    /// Prints a failure, with the time.
    void show(const Failure& failure);
    /// Whether any pass over the directory has ended.
    bool knows(const cmStringT& directory) const { return m_directories.contains(directory); }
    /// Prints the files of StatusListener::roundEnded.
    void show(const Tool& tool, const FileStatuses& files);
    /// "3 changes of 2 paths since 2024-07-01 12:00:00"
    cmStringT summary() const;

private:
    /// What was said of a directory.
    struct Directory {
        bool isMissing = false;
        bool isOutside = false;
        bool hasAnswered = false;
        std::optional<Failure> failure;
    };
    /// One line. `was` and `is` are null when there is nothing to tell.
    struct Line {
        cmROStringT change;
        int colour;
        const cmStringT& path;
        cmROStringT tool = {};
        cmStringT was = {};
        cmStringT is = {};
    };

    void showFiles(const FileStatuses& files, bool isFirst);
    void showDateChange(const cmStringT& path, const FileDate& before, const FileDate& date);
    void showPlace(const PassAnswer& answer, Directory& before);
    void printChange(const Line& line);
    void print(const Line& line);

    const bool m_json;
    const std::function<void(const cmStringT& path)> m_onChange;
    const cmStringT m_since;
    std::size_t m_changes = 0;
    std::unordered_set<cmStringT> m_changedPaths;
    cmDictionary<cmStringT, Directory> m_directories;
    cmDictionary<cmStringT, cmStringT> m_statuses;  ///< what was said of the files that are not clean, by their keys
    std::set<std::int32_t> m_tools;                 ///< numbers of those that have ended a round
    FileDates m_dates;
};
