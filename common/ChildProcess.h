#pragma once

#include "common/ChildPipe.h"
#include "common/CommandLine.h"
#include "common/Environment.h"
#include "common/cmString.h"

#include <chrono>
#include <cstdint>

/// Bit set for spawnProcess.
using SpawnOptions = std::uint32_t;
inline constexpr SpawnOptions spawnScanOperators = 0x001;  ///< a shell operator sends the command to the interpreter, hidden
inline constexpr SpawnOptions spawnErrorToOutput = 0x008;  ///< standard error shares the standard-output pipe
inline constexpr SpawnOptions spawnShellExecute =
    0x010;  ///< through the shell's "open", without pipes and environment; ordinary on POSIX
inline constexpr SpawnOptions spawnNewGroup = 0x020;    ///< a process group of its own; always so on POSIX
inline constexpr SpawnOptions spawnNewConsole = 0x040;  ///< no effect on POSIX, like the other two of windows
inline constexpr SpawnOptions spawnNoWindow = 0x080;
inline constexpr SpawnOptions spawnStandardHandles = 0x100;  ///< without pipes: the output of a host with a console
inline constexpr SpawnOptions spawnHiddenWindow = 0x200;
inline constexpr SpawnOptions spawnForget = 0x400;  ///< give the process up right after its start

/// What one look at a child and its pipes found.
struct ChildActivity {
    bool running;  ///< noted before the pipes: when it is false, they hold all there will be of the child's own
    bool output;   ///< data waits there
    bool error;
};

/// One started child. One thread at a time may use it. It does not end with the record: a child that nobody
/// terminated goes on, and is reaped later.
class ChildProcess {
public:
    static constexpr std::intptr_t none = -1;

    ChildProcess() = default;
    ChildProcess(const ChildProcess&) = delete;
    ChildProcess& operator=(const ChildProcess&) = delete;
    ~ChildProcess() { close(); }

    bool isRunning();
    /// Ends the child and whatever it started.
    void terminate();
    /// Gives the child up and clears the record. Waits only for a child that was terminated, and only briefly.
    void close();
    /// isRunning and both pipes' dataAvailable at once. Never blocks.
    ChildActivity look(ChildPipe& output, ChildPipe& error);
    /// Returns when the child has ended, when one of the pipes has data or ended, or after `timeoutMs` milliseconds.
    void waitForActivity(const ChildPipe& output, const ChildPipe& error, std::uint32_t timeoutMs);
    /// Returns when the child has ended, or after about `timeout`; what it writes meanwhile gathers in its pipes.
    void waitForEnd(std::chrono::microseconds timeout);

    bool isValid() const { return valid != 0; }
    std::uint32_t getProcessId() const { return processId; }

private:
    friend class ChildStarter;

    std::intptr_t handle = none;
    /// What ends the child's own children with it, where that needs a handle.
    [[maybe_unused]] std::intptr_t group = none;
    std::uint32_t processId = 0;
    /// Looks in a row that found nothing, where looking is all that can be done.
    [[maybe_unused]] std::uint32_t idleLooks = 0;
    std::uint8_t valid = 0;
    bool terminated = false;
};

/// The redirected streams of a child; null for none. A child without an input pipe reads an input at its end.
struct SpawnStreams {
    ChildPipe* input = nullptr;
    ChildPipe* output = nullptr;
    ChildPipe* error = nullptr;
    std::uint32_t inputSize = 65536;  ///< pipe buffer sizes, bytes
    std::uint32_t outputSize = 65536;
    std::uint32_t errorSize = 65536;
};

/// Starts `commandLine` (the grammar of CommandLine.h) in `workingDirectory` (empty: the host's own). The program
/// is looked for in PATH only. `variables` are set in the child's environment ("NAME=VALUE"), which is the host's,
/// made quiet when `quiet`. Fills `process` and the given pipes. The child inherits its three standard streams and
/// nothing else of the host: no handle, no signal setting.
/// Throws cmStatusException with cmStatusPipeFailed or cmStatusProcessFailed; then `errorDetail`, when given, tells why
/// in words, and process and pipes are left empty.
void spawnProcess(ChildProcess& process, cmROStringT commandLine, SpawnOptions options, const Environment& variables,
                  cmROStringT workingDirectory, const SpawnStreams& streams, cmStringT* errorDetail, bool quiet);

/// Collects the children that were given up while they ran and have ended since. Every start and every close does so
/// too; who starts nothing any more calls it, so that no ended child lingers. Any thread.
void reapEndedChildren();

/// findProgram with this platform's rules and files and the host's PATH.
cmStringT findHostProgram(cmROStringT program);
