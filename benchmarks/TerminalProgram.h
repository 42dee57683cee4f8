#pragma once

#include <sys/types.h>

#include <chrono>
#include <filesystem>
#include <functional>
#include <memory>
#include <string>
#include <vector>

struct VTerm;
struct VTermScreen;

/// A program in a terminal of its own, whose screen can be looked at. The destructor kills it.
class TerminalProgram {
public:
    static constexpr int width = 120;
    static constexpr int height = 40;

    /// Starts `words` in `directory`. Throws BenchError when it cannot.
    TerminalProgram(const std::vector<std::string>& words, const std::filesystem::path& directory);
    ~TerminalProgram();
    TerminalProgram(const TerminalProgram&) = delete;
    TerminalProgram& operator=(const TerminalProgram&) = delete;

    void type(const std::string& keys);
    /// Takes the program's output until `done` is true of the screen. Returns the time since `since`, in milliseconds. Throws
    /// BenchError when the program ends before, or after three minutes.
    double waitFor(const std::function<bool()>& done, std::chrono::steady_clock::time_point since);
    /// The text of a row, from 0, without blanks at its end.
    std::string row(int number) const;
    bool shows(const std::string& text) const;
    /// The first row from the top whose first character is drawn in reverse; below 0 when there is none.
    int reversedRow() const;
    /// The most memory that the program has had in use so far, without its children.
    double peakBytes() const;

private:
    struct FreeTerminal {
        void operator()(VTerm* terminal) const;
    };

    bool takeOutput(int timeoutMs);

    std::unique_ptr<VTerm, FreeTerminal> m_terminal;
    VTermScreen* m_screen;
    int m_master = -1;
    pid_t m_process = 0;
};
