#include "txhost/ScratchRepository.h"

#include "common/CommandRunner.h"
#include "common/cmFile.h"
#include "common/cmStringCatHelper.h"
#include "txhost/Console.h"
#include "txhost/Host.h"
#include "txhost/WaitProgress.h"

#include <fstream>
#include <random>
#include <system_error>
#include <utility>

namespace fs = std::filesystem;

namespace {

fs::path newFolder()
{
    std::random_device random;
    const fs::path folder =
        cmSystemPath(cmRealPath(cmPathText(fs::temp_directory_path()))) / ("filewatcher-tour-" + std::to_string(random()));
    std::error_code error;
    if (!fs::create_directories(folder, error))
        throw HostError(cmPathText(folder).c_str() + (": " + error.message()));
    return folder;
}

}  // namespace

ScratchRepository::ScratchRepository(const cmStringT& git) : ScratchRepository(git, newFolder())
{
    fill();  // the folder has an owner by now: a failure removes it
}

ScratchRepository::ScratchRepository(const cmStringT& git, fs::path folder) : m_git(git), m_folder(std::move(folder)) {}

void ScratchRepository::fill()
{
    fs::create_directories(m_folder / "repository" / "docs & notes");
    fs::create_directories(m_folder / "outside");
    runGit("init --quiet");
    runGit("config user.name Tour");
    runGit("config user.email tour@example.org");
    runGit("config commit.gpgSign false");
    for (const char* name : {"readme.txt", "docs & notes/plan.txt",
                             "docs & notes/\xC3\xBC"
                             "bersicht.txt"})
        writeFile(name, committedText);
    runGit("add .");
    runGit("commit --quiet --message first");
}

ScratchRepository::~ScratchRepository()
{
    cmRemoveFolder(cmPathText(m_folder));
}

void ScratchRepository::writeFile(const std::string& name, const std::string& text)
{
    std::ofstream file(m_folder / "repository" / cmSystemPath(name), std::ios::binary);
    if (!(file << text))
        throw HostError("cannot write " + name);
}

void ScratchRepository::runGit(const std::string& arguments)
{
    CaptureControl control;
    control.stopRequested = &console::wasInterrupted;
    const WaitProgress progress(cmCat("git ") + arguments);
    const cmStringT command = cmCat("\"") + m_git + "\" " + arguments;
    const CaptureResult result = captureCommand(command, spawnPlainCommand, path(), control, [](cmROStringT) {});
    if (result.stopped)
        throw HostError({Failure::stopped, "interrupted", path()});
    if (result.status != 0 || result.errorOutput.view().find("fatal:") != cmROStringT::npos)
        throw HostError("git " + arguments + ": " + result.failure.c_str() + std::string(cmWithoutLineEnd(result.errorOutput)));
}
