#pragma once

#include <chrono>
#include <filesystem>
#include <string>
#include <vector>

/// What the measurements need from the operating system: commands, and figures of this process. Scripts are for a plain shell.
/// Everything that cannot be done throws BenchError.
namespace bench {

/// The processor time of this process without its children, in milliseconds.
double processorMilliseconds();

/// A command line, in the module's grammar, that writes a file to standard output.
std::string printFileCommand(const std::filesystem::path& file);
/// A command line, in the module's grammar, that waits without output.
std::string sleepCommand(int seconds);

/// Runs a script and waits for it. Throws BenchError when it fails.
void runInShell(const std::string& script);
/// The same; returns the elapsed time in milliseconds.
double timeInShell(const std::string& script);
/// A script that asks `git` for the top level and the status of the repository at `top`. `options` of the status begin with a
/// blank.
std::string statusScript(const std::filesystem::path& git, const std::filesystem::path& top, const std::string& options);
/// A script that asks `svn` for the status of the working copy at `top`, as a status pass does.
std::string svnStatusScript(const std::filesystem::path& svn, const std::filesystem::path& top);
/// A script that creates a Subversion repository beside the folder `files`, commits these files, and checks them out as `top`.
std::string svnCheckoutScript(const std::filesystem::path& files, const std::filesystem::path& top);
/// A script that runs `git` with these arguments in `top`.
std::string gitCommand(const std::filesystem::path& git, const std::filesystem::path& top, const std::string& arguments);
/// The same with its output discarded.
std::string gitScript(const std::filesystem::path& git, const std::filesystem::path& top, const std::string& arguments);
/// The same with its output in `file`.
std::string gitToFileScript(const std::filesystem::path& git, const std::filesystem::path& top, const std::string& arguments,
                            const std::filesystem::path& file);
/// A script that counts the lines of a file that contain `word`.
std::string countScript(const std::string& word, const std::filesystem::path& file);
/// A script with which git imports the fast-import stream in a file into the repository at `top`.
std::string fastImportScript(const std::filesystem::path& top, const std::filesystem::path& stream);
/// The output of a script. Throws BenchError when it cannot be run.
std::string shellOutput(const std::string& script);
/// The resident memory of this process.
double residentBytes();
/// A script with which `git` writes the committed revision of `file` into `copy`.
std::string showScript(const std::filesystem::path& git, const std::filesystem::path& file, const std::filesystem::path& copy);
/// Asks the system for the date of each file and whether it may be written. Throws BenchError when a file is missing.
void readDates(const std::vector<std::string>& files);
/// A script that sends a file through a pipe and discards it.
std::string pipeScript(const std::filesystem::path& file);

/// Creates a program at `path` that, whatever its arguments, creates the file `marker` and then hangs.
void makeHangingTool(const std::filesystem::path& path, const std::filesystem::path& marker);

/// A child process that is started and killed by plain system calls. The destructor kills it.
class DirectChild {
public:
    /// Throws BenchError when it cannot be started.
    explicit DirectChild(const std::filesystem::path& program);
    ~DirectChild() { end(); }
    DirectChild(const DirectChild&) = delete;
    DirectChild& operator=(const DirectChild&) = delete;

    /// Kills the child and waits for its end.
    void end();

private:
    int m_id = 0;
};

/// A command whose output is read through a pipe. The destructor kills it.
class PipedCommand {
public:
    /// Starts `words`, the first of which is the program's path, in `directory`. Throws BenchError when it cannot be started.
    PipedCommand(const std::vector<std::string>& words, const std::filesystem::path& directory);
    ~PipedCommand();
    PipedCommand(const PipedCommand&) = delete;
    PipedCommand& operator=(const PipedCommand&) = delete;

    /// Both return the time since the start, in milliseconds.
    double readLines(int lines);
    double readToEnd();
    /// The most memory that the command has had in use, without its children. After readToEnd.
    double peakBytes() const { return m_peakBytes; }

private:
    const std::chrono::steady_clock::time_point m_start = std::chrono::steady_clock::now();
    int m_output = -1;
    int m_id = 0;
    double m_peakBytes = 0;
};

}  // namespace bench
