#pragma once

#include <filesystem>
#include <string>

/// Runs git in `directory` and returns its output without the last line end. Throws BenchError when git cannot be started or
/// reports a fatal error.
std::string runGit(const std::filesystem::path& directory, const std::string& arguments);
/// Creates an empty repository with an author of its own, whose current branch is main. Throws BenchError when it cannot.
void makeRepository(const std::filesystem::path& top);
/// Imports a fast-import stream into the repository at `top`. Throws BenchError when it cannot.
void importHistory(const std::filesystem::path& top, const std::string& stream);

/// A Git repository with a generated history: side branches and merges throughout, a thousand authors, subjects of about fifty
/// bytes.
class MadeHistory {
public:
    /// A word that only rareSubjects() subjects contain.
    static constexpr char rareWord[] = "zweckentfremdet";

    /// Creates the repository at `top` with so many commits. Throws BenchError when it cannot.
    MadeHistory(const std::filesystem::path& top, int commits);

    const std::filesystem::path& top() const { return m_top; }
    int commits() const { return m_commits; }
    /// How many subjects contain the rare word.
    int rareSubjects() const { return m_commits / rareEvery; }

private:
    static constexpr int rareEvery = 50000;
    std::string stream() const;
    std::string commit(int number) const;

    std::filesystem::path m_top;
    int m_commits;
};
