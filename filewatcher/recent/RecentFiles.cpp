#include "common/cmDictionary.h"
#include "filewatcher/RegisteredFunctions.h"
#include "filewatcher/recent/RecentDocuments.h"

#include <cstddef>
#include <cstdint>

namespace {

constexpr std::size_t reportLimit = 20;

// For the editor's thread only.
cmArray<cmStringT> pendingFiles;
cmDictionary<cmStringT, bool> recordedFiles;  // the same paths; nothing reads it yet
std::uint8_t shellInitialised = 0;
RecentDocuments* chosenDocuments = nullptr;

RecentDocuments& recentDocuments()
{
    return chosenDocuments ? *chosenDocuments : systemRecentDocuments();
}

/// The newest pending files, in the order in which they were added: all of them up to the limit, above it one more than the
/// limit.
cmArray<cmStringT> filesToReport()
{
    const std::size_t count = pendingFiles.size();
    const std::size_t first = count <= reportLimit ? 0 : count - reportLimit - 1;
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
