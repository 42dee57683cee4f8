#include "benchmarks/TerminalProgram.h"

#include "benchmarks/Measurement.h"

#include <fcntl.h>
#include <poll.h>
#include <pty.h>
#include <sys/wait.h>
#include <unistd.h>
#include <vterm.h>

#include <array>
#include <cerrno>
#include <csignal>
#include <cstdlib>
#include <fstream>

namespace fs = std::filesystem;

namespace {

constexpr auto limit = std::chrono::minutes(3);

/// What a terminal answers to the program that runs in it.
void answer(const char* text, std::size_t length, void* master)
{
    if (write(*static_cast<int*>(master), text, length) < 0)
        throw BenchError("a terminal cannot be written to");
}

[[noreturn]] void become(const std::vector<std::string>& words, const fs::path& directory)
{
    std::vector<char*> arguments;
    for (const std::string& word : words)
        arguments.push_back(const_cast<char*>(word.c_str()));
    arguments.push_back(nullptr);
    setenv("TERM", "xterm-256color", 1);
    setenv("LC_ALL", "C.UTF-8", 1);
    if (chdir(directory.c_str()) == 0)
        execvp(arguments.front(), arguments.data());
    _exit(127);
}

}  // namespace

void TerminalProgram::FreeTerminal::operator()(VTerm* terminal) const
{
    vterm_free(terminal);
}

TerminalProgram::TerminalProgram(const std::vector<std::string>& words, const fs::path& directory)
    : m_terminal(vterm_new(height, width)), m_screen(vterm_obtain_screen(m_terminal.get()))
{
    vterm_set_utf8(m_terminal.get(), 1);
    vterm_screen_enable_altscreen(m_screen, 1);
    vterm_screen_reset(m_screen, 1);
    vterm_output_set_callback(m_terminal.get(), &answer, &m_master);
    const winsize size{height, width, 0, 0};
    m_process = forkpty(&m_master, nullptr, nullptr, &size);
    if (m_process < 0)
        throw BenchError("no terminal can be had for " + words.front());
    if (m_process == 0)
        become(words, directory);
    fcntl(m_master, F_SETFD, FD_CLOEXEC);
}

TerminalProgram::~TerminalProgram()
{
    close(m_master);
    kill(m_process, SIGKILL);
    while (waitpid(m_process, nullptr, 0) < 0 && errno == EINTR) {
    }
}

void TerminalProgram::type(const std::string& keys)
{
    if (write(m_master, keys.data(), keys.size()) != static_cast<ssize_t>(keys.size()))
        throw BenchError("the keys cannot be typed");
}

double TerminalProgram::waitFor(const std::function<bool()>& done, std::chrono::steady_clock::time_point since)
{
    using Clock = std::chrono::steady_clock;
    const auto end = Clock::now() + limit;
    while (!done()) {
        if (!takeOutput(1000))
            throw BenchError("the program in the terminal has ended early");
        if (Clock::now() > end)
            throw BenchError("the screen does not show what is awaited:\n" + row(0) + "\n" + row(height - 2) + "\n"
                             + row(height - 1));
    }
    return std::chrono::duration<double, std::milli>(Clock::now() - since).count();
}

bool TerminalProgram::takeOutput(int timeoutMs)
{
    std::array<char, 65536> block;
    pollfd output{m_master, POLLIN, 0};
    if (poll(&output, 1, timeoutMs) == 0)
        return true;
    const ssize_t count = read(m_master, block.data(), block.size());
    if (count <= 0)
        return false;
    vterm_input_write(m_terminal.get(), block.data(), static_cast<std::size_t>(count));
    return true;
}

std::string TerminalProgram::row(int number) const
{
    std::array<char, width * 8> text;
    const std::size_t length = vterm_screen_get_text(m_screen, text.data(), text.size(), {number, number + 1, 0, width});
    return std::string(text.data(), length);
}

bool TerminalProgram::shows(const std::string& text) const
{
    for (int number = 0; number < height; ++number) {
        if (row(number).find(text) != std::string::npos)
            return true;
    }
    return false;
}

int TerminalProgram::reversedRow() const
{
    for (int number = 0; number < height; ++number) {
        VTermScreenCell cell{};
        vterm_screen_get_cell(m_screen, {number, 0}, &cell);
        if (cell.attrs.reverse)
            return number;
    }
    return -1;
}

double TerminalProgram::peakBytes() const
{
    std::ifstream status("/proc/" + std::to_string(m_process) + "/status");
    for (std::string name; status >> name; status.ignore(1000, '\n')) {
        double kilobytes = 0;
        if (name == "VmHWM:" && status >> kilobytes)
            return kilobytes * 1024;
    }
    throw BenchError("the memory of a program cannot be read");
}
