#include "benchmarks/Measurement.h"
#include "benchmarks/ScratchFolder.h"
#include "benchmarks/System.h"
#include "common/CommandRunner.h"

#include <cstddef>

namespace {

constexpr int captureRounds = 9;
constexpr int idleRounds = 3;
constexpr int idleSeconds = 5;
constexpr std::size_t mebibyte = std::size_t{1} << 20;
constexpr std::size_t captureMebibytes = 256;

double mebibytesPerSecond(double ms)
{
    return static_cast<double>(captureMebibytes) * 1000 / ms;
}

double captureRate(const std::string& command)
{
    cmStringT output;
    const double ms = elapsedMilliseconds([&] { runCommandCapture(command, output, ""); });
    if (output.length() != captureMebibytes * mebibyte)
        throw BenchError("captured " + std::to_string(output.length()) + " bytes");
    return mebibytesPerSecond(ms);
}

/// Waits for a silent child with a stop function, as the status threads do.
void waitForSilentChild()
{
    CaptureControl control;
    control.stopRequested = [] { return false; };
    const CaptureResult result =
        captureCommand(bench::sleepCommand(idleSeconds), spawnScannedCommand, "", control, [](cmROStringT) {});
    if (result.status != 0)
        throw BenchError(result.failure.c_str());
}

}  // namespace

Row measureCapture()
{
    const ScratchFolder folder;
    const std::filesystem::path file = folder / "output";
    writeLargeFile(file, captureMebibytes * mebibyte);
    const std::string command = bench::printFileCommand(file);
    const std::string script = bench::pipeScript(file);
    const auto reference = [&] { return mebibytesPerSecond(bench::timeInShell(script)); };
    const Samples samples = interleave(
        captureRounds, [&] { return captureRate(command); }, reference);
    return makeRow("capture 256 MiB", "MiB/s", samples, Aim::ratioAtLeast, 0.7);
}

Row measureIdleCapture()
{
    double elapsed = 0;
    const auto processorTime = [&elapsed] {
        const double before = bench::processorMilliseconds();
        elapsed = elapsedMilliseconds(&waitForSilentChild);
        return bench::processorMilliseconds() - before;
    };
    // The reference is the elapsed time: the processor time of one busy core.
    const Samples samples = interleave(idleRounds, processorTime, [&elapsed] { return elapsed; });
    Row row = makeRow("processor time while a child sleeps 5 s", "ms", samples, Aim::ratioAtMost, 0.01);
    if (row.reference < idleSeconds * 1000)
        throw BenchError("the child ended early");
    row.percent = true;
    return row;
}
