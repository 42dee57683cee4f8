#pragma once

#include <filesystem>
#include <string>

/// A repository with a history of so many commits, made for a measurement: side branches and merges all the way, a thousand
/// authors, subjects of some fifty bytes.
class MadeHistory {
public:
    /// A word that occurs in few subjects.
    static constexpr char rareWord[] = "zweckentfremdet";

    MadeHistory(const std::filesystem::path& top, int commits);

    const std::filesystem::path& top() const { return m_top; }
    int commits() const { return m_commits; }
    /// How many subjects hold the rare word.
    int rareSubjects() const { return m_commits / rareEvery; }

private:
    static constexpr int rareEvery = 50000;
    std::string stream() const;
    std::string commit(int number) const;

    std::filesystem::path m_top;
    int m_commits;
};
