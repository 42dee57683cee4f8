#include "filewatcher/recent/RecentFiles.h"

#include "common/cmDictionary.h"
#include "filewatcher/RegisteredFunctions.h"

#include <cstddef>
#include <cstdint>

namespace {

constexpr std::size_t reportedAtOnce = 20;

// For the editor's thread only.
cmArray<cmStringT> pendingFiles;
cmDictionary<cmStringT, bool> recordedFiles;
std::uint8_t shellInitialised = 0;
RecentDocuments* chosenDocuments = nullptr;

RecentDocuments& recentDocuments()
{
    return chosenDocuments ? *chosenDocuments : systemRecentDocuments();
}

/// The newest of the pending files; one more than the bound gets through.
cmArray<cmStringT> filesToReport()
{
    const std::size_t count = pendingFiles.size();
    const std::size_t first = count <= reportedAtOnce ? 0 : count - reportedAtOnce - 1;
    return {pendingFiles.begin() + static_cast<std::ptrdiff_t>(first), pendingFiles.end()};
}

}  // namespace

void setRecentDocuments(RecentDocuments* documents)
{
    chosenDocuments = documents;
    shellInitialised = 0;
}

void recentFilesAdd(TXPSZ path)
{
    pendingFiles.emplace_back(path);
    recordedFiles.emplace(path, true);
}

void recentFilesProcessPending()
{
    if (shellInitialised == 0) {
        recentDocuments().setUp();
        shellInitialised = 1;
    }
    if (pendingFiles.empty())
        return;
    recentDocuments().add(filesToReport());
    pendingFiles.clear();
    recordedFiles.clear();
}
