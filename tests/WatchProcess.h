#pragma once

#include "common/ChildProcess.h"
#include "common/CommandQuoting.h"
#include "tests/TestSupport.h"

/// A running `txhost watch --json`, or another command of txhost, and what it writes. The destructor ends it.
class WatchProcess {
public:
    explicit WatchProcess(const Texts& names, const std::string& command = "watch --json --interval 0.2")
    {
        SpawnStreams streams;
        streams.output = &m_output;
        streams.error = &m_error;
        std::string line = "\"" + builtProgram("txhost") + "\" " + command;
        for (const std::string& name : names)
            line += std::string(" ") + quoteArgument(name).c_str();
        spawnProcess(m_process, line, 0, {}, "", streams, nullptr, false);
    }
    ~WatchProcess() { terminate(); }
    WatchProcess(const WatchProcess&) = delete;
    WatchProcess& operator=(const WatchProcess&) = delete;

    /// Waits until the output or the errors contain `wanted`; returns false when they never do.
    bool shows(const std::string& wanted)
    {
        return eventually([&] { return (output() + errors()).find(wanted) != std::string::npos; });
    }
    /// Waits for the end of the process; returns false when it does not end.
    bool ends()
    {
        return eventually([this] { return !m_process.isRunning(); });
    }
    void terminate() { m_process.terminate(), ends(); }
    std::uint32_t id() const { return m_process.getProcessId(); }
    const std::string& output() { return readOn(m_output, m_shown); }
    const std::string& errors() { return readOn(m_error, m_told); }

private:
    static const std::string& readOn(ChildPipe& pipe, std::string& text)
    {
        char buffer[1000];
        while (pipe.dataAvailable())
            text.append(buffer, static_cast<std::size_t>(pipe.read(buffer, sizeof buffer)));
        return text;
    }

    ChildPipe m_output;
    ChildPipe m_error;
    ChildProcess m_process;
    std::string m_shown;
    std::string m_told;
};
