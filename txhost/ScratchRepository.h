#pragma once

#include "common/cmString.h"
#include "common/cmSystemPath.h"

#include <cstdint>
#include <filesystem>
#include <string>

/// A Git repository with one commit in a temporary folder. The destructor removes the folder.
class ScratchRepository {
public:
    static constexpr char committedText[] = "first line\n";  ///< content of every file in the commit
    static constexpr std::int64_t committedSize = sizeof committedText - 1;

    /// `git` is the path of the program. Throws HostError when the repository cannot be created, and after an
    /// interrupt.
    explicit ScratchRepository(const cmStringT& git);
    ~ScratchRepository();
    ScratchRepository(const ScratchRepository&) = delete;
    ScratchRepository& operator=(const ScratchRepository&) = delete;

    /// The top folder of the repository.
    cmStringT path() const { return cmPathText(m_folder / "repository"); }
    /// A folder beside it that belongs to no repository.
    cmStringT outsidePath() const { return cmPathText(m_folder / "outside"); }
    /// Writes a file of the repository; `name` may contain folders. Throws HostError when it cannot be written.
    void writeFile(const std::string& name, const std::string& text);

private:
    /// Has a folder and nothing in it.
    ScratchRepository(const cmStringT& git, std::filesystem::path folder);

    void fill();
    void runGit(const std::string& arguments);

    const cmStringT m_git;
    const std::filesystem::path m_folder;
};
