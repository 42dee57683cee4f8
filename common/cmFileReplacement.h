#pragma once

#include "common/cmString.h"

#include <filesystem>
#include <fstream>

/// Replaces a file as a whole: the content is written to a temporary file in the same folder, and `finish` gives that file the
/// final name. A reader never sees a part of the content. The destructor removes a temporary file that was not put in place.
/// One thread at a time.
class cmFileReplacement {
public:
    /// The folder of `path` must exist. `finish` reports failures. Throws std::system_error only for text that cannot be a path.
    explicit cmFileReplacement(cmROStringT path);
    ~cmFileReplacement();
    cmFileReplacement(const cmFileReplacement&) = delete;
    cmFileReplacement& operator=(const cmFileReplacement&) = delete;

    void write(cmROStringT bytes);
    /// Puts the file in place. Returns false when anything could not be written or the file at `path` cannot be replaced; that
    /// file is then unchanged. Call at most once.
    bool finish();

private:
    std::filesystem::path m_path;
    std::filesystem::path m_temporary;
    std::ofstream m_file;
};
