#pragma once

#include "common/cmString.h"

#include <cstdint>

/// Replaces a file as a whole: the content is written to a temporary file in the same folder, and `finish` gives that file the
/// final name. A reader never sees a part of the content. The destructor removes a temporary file that was not put in place; one
/// that a killed process left behind goes with the next replacement in its folder. One thread at a time.
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
    static constexpr std::intptr_t none = -1;

    // The system's part. A handle that `createNew` returns is inherited by no child and is none of the standard streams.
    static std::intptr_t createNew(const cmStringT& path);  ///< none on failure, also when the file exists
    static bool writeAll(std::intptr_t handle, cmROStringT bytes);
    static bool close(std::intptr_t handle);
    static std::uint32_t thisProcess();
    static bool isAlive(std::uint32_t process);  ///< true when it is not known

    static void removeLeftBehind(cmROStringT folder);
    bool closeFile();

    cmStringT m_path;
    cmStringT m_temporary;
    std::intptr_t m_handle = none;
    bool m_complete;  ///< whether all content so far was written
};
