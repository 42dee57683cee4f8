#include "benchmarks/BenchRepository.h"

#include "benchmarks/BenchModule.h"
#include "benchmarks/Measurement.h"
#include "common/CommandLine.h"
#include "common/CommandRunner.h"
#include "common/cmStringCatHelper.h"

namespace fs = std::filesystem;

std::string runGit(const fs::path& directory, const std::string& arguments)
{
    cmStringT output("");
    const cmStringT command = cmCat(quoteArgument(programInPath("git"))) + " " + arguments;
    const CaptureResult result =
        captureCommand(command, spawnPlainCommand, directory.string(), {}, [&output](cmROStringT bytes) { output += bytes; });
    if (result.status != 0 || result.errorOutput.view().find("fatal:") != cmROStringT::npos)
        throw BenchError("git " + arguments + ": " + result.failure.c_str() + result.errorOutput.c_str());
    return std::string(cmWithoutLineEnd(output));
}

void makeRepository(const fs::path& top)
{
    fs::create_directories(top);
    runGit(top, "init --quiet");
    for (const char* setting : {"user.name Bench", "user.email bench@example.org", "commit.gpgSign false", "gc.auto 0"})
        runGit(top, std::string("config ") + setting);
}
