#pragma once

#include "common/ChildProcess.h"
#include "common/cmThread.h"

#include <set>
#include <string>

/// Runs a command of the user's through the system's shell when something has changed, one run at a time. Its standard input
/// holds the changed paths, each ended by NUL. What it writes is passed on. For the main thread.
class ChangeCommand : private cmThread {
public:
    /// `command` may be empty: then nothing is run. With `toError` the standard output of the command goes to standard error.
    ChangeCommand(std::string command, bool toError) : m_command(std::move(command)), m_toError(toError) {}
    /// Ends a command that runs, with all that it has started.
    ~ChangeCommand() override;

    /// Names a path to the next run.
    void add(const cmStringT& path);
    /// Passes on what the command has written, and starts the next run when the last one has ended. Call it often; it does not
    /// wait, but for a standard output that is not read.
    void advance();

private:
    std::int32_t run() override;
    void begin();
    void end();

    const std::string m_command;
    const bool m_toError;
    std::set<cmStringT> m_changed;  ///< of the next run
    cmStringT m_inputText;          ///< of the current run; the thread reads it
    ChildPipe m_input;              ///< the thread uses it while it runs
    ChildPipe m_output;
    ChildPipe m_error;
    ChildProcess m_process;  // declared after the pipes, so it is closed before them
};
