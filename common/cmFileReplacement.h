#pragma once

#include "common/cmString.h"

#include <filesystem>
#include <fstream>

/// A file that is written beside its final name and put there whole, in place of what is there: a reader never sees half
/// of it. What is not put there goes with the object. One thread at a time.
class cmFileReplacement {
public:
    /// In a folder that exists. What fails from here on is what `finish` reports; throws std::system_error only for a path that
    /// is no name that the system could have.
    explicit cmFileReplacement(cmROStringT path);
    ~cmFileReplacement();
    cmFileReplacement(const cmFileReplacement&) = delete;
    cmFileReplacement& operator=(const cmFileReplacement&) = delete;

    void write(cmROStringT bytes);
    /// Puts the file in place. False when any of it could not be written or its name is taken by something that stays.
    bool finish();

private:
    /// Gives the file that was written its name. What had the name may be beside it afterwards.
    bool putInPlace() const;

    std::filesystem::path m_path;
    std::filesystem::path m_beside;
    std::ofstream m_file;
};
