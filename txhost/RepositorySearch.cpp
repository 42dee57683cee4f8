#include "txhost/RepositorySearch.h"

#include "common/cmSystemPath.h"
#include "txhost/Console.h"

#include <algorithm>
#include <filesystem>
#include <system_error>

namespace fs = std::filesystem;

namespace {

class Search {
public:
    Search(const std::string& tool, FoundRepositories& found) : m_tool(tool), m_found(found) {}

    void searchAt(const cmStringT& top)
    {
        enter(top, findMarkedTool);
        while (!m_pending.empty()) {
            if (console::wasInterrupted())
                throw HostError({Failure::stopped, "interrupted", top});
            const fs::path folder = m_pending.back();
            m_pending.pop_back();
            searchIn(folder);
        }
    }

private:
    /// Takes the folder if `findMark` finds the mark of a tool, and remembers to search in it.
    void enter(const cmStringT& path, const Tool* (*findMark)(const cmStringT&))
    {
        try {
            const Tool* tool = findMark(path);
            if (tool && (m_tool.empty() || tool->name == m_tool))
                m_found.repositories.push_back({path, *tool});
            m_pending.push_back(cmSystemPath(path));
        } catch (const HostError& error) {  // it cannot be read
            m_found.failures.push_back(error.failure());
        }
    }

    void searchIn(const fs::path& folder)
    {
        std::error_code error;
        for (fs::directory_iterator entry(folder, error), end; !error && entry != end; entry.increment(error)) {
            std::error_code unknown;  // what vanishes meanwhile is no folder
            const fs::path name = entry->path().filename();
            if (entry->symlink_status(unknown).type() != fs::file_type::directory || name == ".git" || name == ".svn")
                continue;
            enter(cmPathText(entry->path()), toolMarkedIn);
        }
        if (error)
            m_found.failures.push_back({Failure::own, cmROStringT(error.message()), cmPathText(folder)});
    }

    const std::string& m_tool;
    FoundRepositories& m_found;
    cmArray<fs::path> m_pending;
};

}  // namespace

FoundRepositories findRepositories(const cmArray<WatchedDirectory>& directories, const std::string& tool)
{
    FoundRepositories found;
    Search search(tool, found);
    for (const WatchedDirectory& directory : directories)
        search.searchAt(directory.path);
    auto& all = found.repositories;
    std::sort(all.begin(), all.end(), [](const auto& one, const auto& other) { return one.path < other.path; });
    all.erase(std::unique(all.begin(), all.end(), [](const auto& one, const auto& other) { return one.path == other.path; }),
              all.end());
    if (all.empty() && found.failures.empty() && !directories.empty())
        throw HostError(directories.front().path, "no repository in it");
    return found;
}
