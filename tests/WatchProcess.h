#pragma once

#include "common/ChildProcess.h"
#include "common/CommandQuoting.h"
#include "tests/TestSupport.h"

/// A running `txhost watch --json` and its output. The destructor ends it.
class WatchProcess {
public:
    explicit WatchProcess(const Texts& names)
    {
        SpawnStreams streams;
        streams.output = &m_output;
        std::string command = "\"" + builtProgram("txhost") + "\" watch --json --interval 1";
        for (const std::string& name : names)
            command += std::string(" ") + quoteArgument(name).c_str();
        spawnProcess(m_process, command, 0, {}, "", streams, nullptr, false);
    }
    ~WatchProcess() { terminate(); }
    WatchProcess(const WatchProcess&) = delete;
    WatchProcess& operator=(const WatchProcess&) = delete;

    /// Waits until the output contains `wanted`; returns false when it never does.
    bool shows(const std::string& wanted)
    {
        return eventually([&] { return output().find(wanted) != std::string::npos; });
    }
    /// Waits for the end of the process; returns false when it does not end.
    bool ends()
    {
        return eventually([this] { return !m_process.isRunning(); });
    }
    void terminate() { m_process.terminate(), ends(); }
    std::uint32_t id() const { return m_process.getProcessId(); }
    const std::string& output()
    {
        char buffer[1000];
        while (m_output.dataAvailable())
            m_shown.append(buffer, static_cast<std::size_t>(m_output.read(buffer, sizeof buffer)));
        return m_shown;
    }

private:
    ChildPipe m_output;
    ChildProcess m_process;
    std::string m_shown;
};
