#include "common/CommandRunner.h"

CaptureResult captureCommand(cmROStringT commandLine, SpawnOptions options, cmROStringT workingDirectory,
                             const CaptureControl& control, const CaptureSink& sink)
{
    CommandCapture capture(control, sink);
    if (capture.start(commandLine, options, workingDirectory)) {
        while (capture.pass()) {
        }
    }
    return capture.finish();
}

std::int32_t runCommandCapture(cmROStringT commandLine, cmStringT& output, cmROStringT workingDirectory)
{
    const auto append = [&output](cmROStringT bytes) { output += bytes; };
    return captureCommand(commandLine, spawnScannedCommand, workingDirectory, {}, append).status;
}
