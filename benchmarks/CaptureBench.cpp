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
    const double ms = milliseconds([&] { runCommandCapture(command, output, ""); });
    if (output.length() != captureMebibytes * mebibyte)
        throw BenchError("captured " + std::to_string(output.length()) + " bytes");
    return mebibytesPerSecond(ms);
}

/// Waits for a silent child in the way that can be stopped, as the status threads do.
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
    const auto reference = [&] { return mebibytesPerSecond(milliseconds([&] { bench::runInShell(script); })); };
    const Samples samples = interleave(
        captureRounds, [&] { return captureRate(command); }, reference);
    Row row = makeRow("capture 256 MiB", "MiB/s", median(samples.ours), median(samples.reference));
    row.aim = Aim::ratioAtLeast;
    row.limit = 0.7;
    row.rounds = captureRounds;
    return row;
}

Row measureIdleCapture()
{
    double elapsed = 0;
    const auto processorTime = [&elapsed] {
        const double before = bench::processorMilliseconds();
        elapsed = milliseconds(&waitForSilentChild);
        return bench::processorMilliseconds() - before;
    };
    // The reference is one core over the very same time.
    const Samples samples = interleave(idleRounds, processorTime, [&elapsed] { return elapsed; });
    Row row = makeRow("processor time while a child sleeps 5 s", "ms", median(samples.ours), median(samples.reference));
    if (row.reference < idleSeconds * 1000)
        throw BenchError("the child ended early");
    row.aim = Aim::ratioAtMost;
    row.limit = 0.01;
    row.percent = true;
    row.rounds = idleRounds;
    return row;
}
