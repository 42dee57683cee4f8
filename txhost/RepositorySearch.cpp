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
        take(top, findMarkedTool(top));
        m_pending.assign(1, cmSystemPath(top));
        while (!m_pending.empty()) {
            if (console::wasInterrupted())
                throw HostError({Failure::stopped, "interrupted", top});
            const fs::path folder = m_pending.back();
            m_pending.pop_back();
            searchIn(folder);
        }
    }

private:
    void take(const cmStringT& path, const Tool* tool)
    {
        if (tool && (m_tool.empty() || tool->name == m_tool))
            m_found.repositories.push_back({path, *tool});
    }

    void searchIn(const fs::path& folder)
    {
        std::error_code error;
        for (fs::directory_iterator entry(folder, error), end; !error && entry != end; entry.increment(error)) {
            std::error_code unknown;  // what vanishes meanwhile is no folder
            const fs::path name = entry->path().filename();
            if (entry->symlink_status(unknown).type() != fs::file_type::directory || name == ".git" || name == ".svn")
                continue;
            take(cmPathText(entry->path()), toolMarkedIn(entry->path()));
            m_pending.push_back(entry->path());
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
    if (all.empty() && found.failures.empty())
        throw HostError(directories.front().path, "no repository in it");
    return found;
}
