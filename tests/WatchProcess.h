#pragma once

#include "common/ChildProcess.h"
#include "tests/TestSupport.h"

#include <cstdint>
#include <string>
#include <vector>

/// A `txhost watch`, and what it has written so far.
class WatchProcess {
public:
    explicit WatchProcess(const std::vector<std::string>& names)
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

    /// Waits until it has written this.
    bool shows(const std::string& wanted)
    {
        return eventually([&] {
            take();
            return m_shown.find(wanted) != std::string::npos;
        });
    }
    /// Waits for its end.
    bool ends()
    {
        const bool ended = eventually([this] { return !m_process.isRunning(); });
        take();
        return ended;
    }
    void terminate()
    {
        m_process.terminate();
        ends();
    }
    std::uint32_t id() const { return m_process.getProcessId(); }
    const std::string& shown() const { return m_shown; }

private:
    void take()
    {
        char buffer[1000];
        while (m_output.dataAvailable())
            m_shown.append(buffer, static_cast<std::size_t>(m_output.read(buffer, sizeof buffer)));
    }

    ChildPipe m_output;
    ChildProcess m_process;
    std::string m_shown;
};
