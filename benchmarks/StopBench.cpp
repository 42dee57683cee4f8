#include "benchmarks/BenchModule.h"
#include "benchmarks/Measurement.h"
#include "benchmarks/ScratchFolder.h"
#include "benchmarks/System.h"

#include <chrono>
#include <random>
#include <thread>

namespace fs = std::filesystem;

namespace {

constexpr int rounds = 200;

/// A tool that hangs, the folder that is watched with it, and the marker file that it creates when it runs.
class HangingTool {
public:
    HangingTool() : m_marker(m_folder / "running"), m_program(m_folder / "tool"), m_watched(m_folder / "watched")
    {
        fs::create_directories(m_watched);
        bench::makeHangingTool(m_program, m_marker);
    }

    const fs::path& program() const { return m_program; }
    const fs::path& watched() const { return m_watched; }
    bool isRunning() const { return fs::exists(m_marker); }
    void removeMarker() const { fs::remove(m_marker); }

private:
    ScratchFolder m_folder;
    fs::path m_marker;
    fs::path m_program;
    fs::path m_watched;
};

/// Waits up to 20 ms, so that the stops come at different moments of the thread's polling interval.
void pauseAtRandom()
{
    static std::mt19937 random(20240229);
    std::uniform_int_distribution<int> microseconds(0, 20'000);
    std::this_thread::sleep_for(std::chrono::microseconds(microseconds(random)));
}

double stopThread(BenchModule& module, const HangingTool& tool)
{
    tool.removeMarker();
    module.addPath(tool.watched().string());
    module.waitFor([&] { return module.hasPassBegun() && tool.isRunning(); }, "the tool to hang");
    pauseAtRandom();
    return elapsedMilliseconds([&module] { module.call("filewatcherStop", {BenchModule::gitType}); });
}

double endDirectly(BenchModule& module, const HangingTool& tool)
{
    tool.removeMarker();
    bench::DirectChild child(tool.program());
    module.waitFor([&tool] { return tool.isRunning(); }, "the child to hang");
    pauseAtRandom();
    return elapsedMilliseconds([&child] { child.end(); });
}

}  // namespace

Row measureStop()
{
    const HangingTool tool;
    BenchModule module(tool.program().string());
    const Samples samples = interleave(
        rounds, [&] { return stopThread(module, tool); }, [&] { return endDirectly(module, tool); });
    return makeRow("stopping a busy status thread, 99th percentile of 200", "ms", percentile(samples.ours, 0.99),
                   median(samples.reference), Aim::oursAtMost, 50, rounds);
}
