#pragma once

#include "txhost/FileDates.h"
#include "txhost/StatusPoll.h"

/// Prints what `watch` sees: each change once, with the time of day.
class ChangePrinter {
public:
    explicit ChangePrinter(bool json) : m_json(json) {}

    /// Prints changed dates. The first dates of a file are only stored.
    void show(const FileDates& dates);
    /// Prints what a pass has changed: its files, its failure or that this is over, and whether its directory is in a repository.
    void show(const PassAnswer& answer);
    /// Prints files whose status has changed.
    void show(const FileStatuses& files);

private:
    /// What was said of a directory.
    struct Directory {
        bool isOutside = false;
        std::optional<Failure> failure;
    };

    void showDateChange(const cmStringT& path, const FileDate& before, const FileDate& date);
    void printFailure(const Failure& failure);
    void print(cmROStringT change, int colour, const cmStringT& path, cmROStringT tool = {});

    bool m_json;
    cmDictionary<cmStringT, Directory> m_directories;
    FileDates m_dates;
};
