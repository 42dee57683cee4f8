#pragma once

#include "common/cmString.h"
#include "common/cmSystemPath.h"

#include <cstdint>
#include <filesystem>
#include <string>

/// A Git repository with a few commits in a temporary folder; it goes with the object.
class ScratchRepository {
public:
    static constexpr char committedText[] = "first line\n";  ///< of every file
    static constexpr std::int64_t committedSize = sizeof committedText - 1;

    /// `git` is the program's path. Throws HostError when the repository cannot be made.
    explicit ScratchRepository(const cmStringT& git);
    ~ScratchRepository();
    ScratchRepository(const ScratchRepository&) = delete;
    ScratchRepository& operator=(const ScratchRepository&) = delete;

    /// The repository's folder, and one beside it that belongs to no repository.
    cmStringT path() const { return cmPathText(m_folder / "repository"); }
    cmStringT outsidePath() const { return cmPathText(m_folder / "outside"); }
    void writeFile(const std::string& name, const std::string& text);

private:
    void runGit(const std::string& arguments);

    cmStringT m_git;
    std::filesystem::path m_folder;
};
