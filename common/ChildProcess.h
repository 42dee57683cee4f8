#pragma once

#include "common/ChildPipe.h"
#include "common/Environment.h"
#include "common/cmString.h"

#include <chrono>
#include <cstdint>

/// Bit set for spawnProcess.
using SpawnOptions = std::uint32_t;
inline constexpr SpawnOptions spawnScanOperators =
    0x001;  ///< run a command with a shell operator through the interpreter, hidden
inline constexpr SpawnOptions spawnErrorToOutput = 0x008;    ///< standard error shares the standard-output pipe
inline constexpr SpawnOptions spawnShellExecute = 0x010;     ///< Windows: the shell's "open", without pipes or environment
inline constexpr SpawnOptions spawnNewGroup = 0x020;         ///< a process group of its own; always so on POSIX
inline constexpr SpawnOptions spawnNewConsole = 0x040;       ///< Windows only
inline constexpr SpawnOptions spawnNoWindow = 0x080;         ///< Windows only
inline constexpr SpawnOptions spawnStandardHandles = 0x100;  ///< without pipes too, pass on the streams of a host with a console
inline constexpr SpawnOptions spawnHiddenWindow = 0x200;     ///< Windows only
inline constexpr SpawnOptions spawnForget = 0x400;           ///< close the record right after the start

/// The state of a child and its pipes at one moment.
struct ChildActivity {
    bool running;  ///< read before the pipes: when false, they already hold all of the child's own output
    bool output;   ///< data can be read
    bool error;
    bool failed;  ///< the system could not tell at least one of them; rely on none then
};

/// One started child. One thread at a time may use it. The child does not end with the record: unless it was terminated it goes
/// on running, and is reaped later. It is waited for by its own handle, never by a number that may be another process's by now.
class ChildProcess {
public:
    static constexpr std::intptr_t none = -1;

    ChildProcess() = default;
    ChildProcess(const ChildProcess&) = delete;
    ChildProcess& operator=(const ChildProcess&) = delete;
    ~ChildProcess() { close(); }

    bool isRunning();
    /// Ends the child and the processes that it has started: on Windows its job, elsewhere all that endProcessFamily finds. Does
    /// not wait.
    void terminate();
    /// In words, how the child came to an end that was not its own: a signal, on Windows a status of the system (a crash,
    /// Ctrl-C). Null when it has ended by itself, with whatever exit code, when it still runs, and when the system cannot tell:
    /// the host may have reaped it.
    cmStringT abnormalEnd() const;
    /// The exit code of a child that has come to its own end; 0 as long as there is none.
    std::int32_t exitCode() const;
    /// Releases the child and clears the record. Waits up to 50 ms for a child that was terminated, otherwise not at all.
    void close();
    /// isRunning and dataAvailable of both pipes in one call. Never blocks.
    ChildActivity poll(ChildPipe& output, ChildPipe& error);
    /// Blocks until the child has ended, a pipe has data or has ended, or `timeoutMs` milliseconds have passed. Windows cannot
    /// wait for these pipes: there the call returns after 10 ms at the latest. Returns false when the system cannot wait.
    bool waitForActivity(const ChildPipe& output, const ChildPipe& error, std::uint32_t timeoutMs);
    /// Blocks until the child has ended or about `timeout` has passed. The child's output accumulates in its pipes meanwhile.
    /// Returns false when the system cannot wait.
    bool waitForEnd(std::chrono::microseconds timeout);

    bool isValid() const { return valid != 0; }
    std::uint32_t getProcessId() const { return processId; }

private:
    friend class ChildStarter;

    std::intptr_t handle = none;
    /// Windows: the job that the child and its own children belong to.
    [[maybe_unused]] std::intptr_t job = none;
    std::uint32_t processId = 0;
    /// Windows: consecutive polls that found no data.
    [[maybe_unused]] std::uint32_t idlePolls = 0;
    std::uint8_t valid = 0;
    bool terminated = false;
};

/// The redirected streams of a child; null for none. A child without an input pipe reads an empty standard input.
struct SpawnStreams {
    ChildPipe* input = nullptr;
    ChildPipe* output = nullptr;
    ChildPipe* error = nullptr;
    std::uint32_t inputSize = 65536;  ///< pipe buffer sizes, bytes
    std::uint32_t outputSize = 65536;
    std::uint32_t errorSize = 65536;
};

/// Starts `commandLine` (the grammar of CommandLine.h) in `workingDirectory` (empty for the host's own). The program is searched
/// for in PATH only. The child's environment is the host's, passed through quietEnvironment when `quiet`, with `variables`
/// ("NAME=VALUE") set. The child inherits its three standard streams and nothing else of the host: no handle, no signal setting.
/// Fills `process` and the given pipes, which the caller owns.
/// Throws cmStatusException with cmStatusPipeFailed or cmStatusProcessFailed; then `process` and the pipes are empty and
/// `errorDetail`, unless null, holds the reason in words. Any thread.
void spawnProcess(ChildProcess& process, cmROStringT commandLine, SpawnOptions options, const Environment& variables,
                  cmROStringT workingDirectory, const SpawnStreams& streams, cmStringT* errorDetail, bool quiet);

/// Reaps the children whose records were closed while they ran and which have ended since. Every start and every close does so
/// too; call it to leave no zombie behind when nothing more will be started. Any thread.
void reapEndedChildren();
/// Waits until the children that were terminated, and whose records were closed since, have ended and are reaped; at most
/// `timeoutMs` milliseconds. Those left are reaped later. Any thread.
void collectTerminatedChildren(std::uint32_t timeoutMs);

/// findProgram with this platform's rules, its file system, and the host's PATH. Any thread.
cmStringT findHostProgram(cmROStringT program);
