#include "txhost/ChangeCommand.h"

#include "common/cmStatusException.h"
#include "common/cmStringCatHelper.h"
#include "txhost/Console.h"
#include "txhost/HostSystem.h"

#include <algorithm>
#include <array>
#include <cstdio>
#include <string>
#include <utility>

namespace {

void passOn(ChildPipe& pipe, std::FILE* stream)
{
    std::array<char, 8192> block{};
    constexpr int mostBlocks = 64;  // more than a pipe holds; a command that writes on and on must not hold up the rest
    for (int blocks = 0; blocks < mostBlocks && pipe.dataAvailable(); ++blocks) {
        const int count = pipe.read(block.data(), static_cast<std::uint32_t>(block.size()));
        if (count < 1)
            break;
        std::fwrite(block.data(), 1, static_cast<std::size_t>(count), stream);
        std::fflush(stream);
    }
}

}  // namespace

ChangeCommand::~ChangeCommand()
{
    m_process.terminate();  // so nobody reads its input any more, and the thread ends
    join();
}

void ChangeCommand::add(const cmStringT& path)
{
    if (!m_command.empty())
        m_changed.insert(path);
}

void ChangeCommand::advance()
{
    if (m_process.isValid()) {
        const bool isRunning = m_process.isRunning();  // asked first: what it wrote last is in the pipes when it has ended
        passOn(m_output, m_toError ? stderr : stdout);
        passOn(m_error, stderr);
        if (isRunning)
            return;
        end();
    }
    if (!m_changed.empty())
        begin();
}

void ChangeCommand::begin()
{
    m_inputText = "";
    for (const cmStringT& path : std::exchange(m_changed, {})) {
        m_inputText += path;
        m_inputText += '\0';
    }
    SpawnStreams streams;
    streams.input = &m_input;
    streams.output = &m_output;
    streams.error = &m_error;
    cmStringT reason;
    try {
        spawnProcess(m_process, shellCommandLine(m_command), 0, {}, "", streams, &reason, false);
    } catch (const cmStatusException&) {
        console::printError(cmStringT(cmCat("the command could not be started: ") + reason));
        return;
    }
    if (start() != 0) {  // the command would wait for its input
        m_process.terminate();
        console::printError("the command could not be given its input: no thread");
    }
}

void ChangeCommand::end()
{
    if (const cmStringT reason = m_process.abnormalEnd(); !reason.isNull())
        console::printError(cmStringT(cmCat("the command ") + reason));
    else if (const std::int32_t code = m_process.exitCode(); code != 0)
        console::printError(cmStringT(cmCat("the command ended with ") + std::to_string(code)));
    m_process.terminate();  // what it has left behind: the thread would wait while that holds the input
    join();
    m_process.close();
    for (ChildPipe* pipe : {&m_input, &m_output, &m_error})
        pipe->close();
}

/// Writes the input. A command that does not read it may end nevertheless.
std::int32_t ChangeCommand::run()
{
    cmROStringT left = m_inputText;
    while (!left.empty()) {
        const std::size_t count = std::min<std::size_t>(left.size(), 65536);
        if (m_input.write(left.data(), static_cast<std::uint32_t>(count)) < 1)
            break;
        left.remove_prefix(count);
    }
    m_input.close();
    return 0;
}
