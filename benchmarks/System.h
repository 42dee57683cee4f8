#pragma once

#include <filesystem>
#include <string>
#include <vector>

/// What the measurements want of the system: the commands that they run, and what it knows of this process.
namespace bench {

/// The processor time that this process has used, without its children, in milliseconds.
double processorMilliseconds();

// Command lines in the module's grammar.
std::string printFileCommand(const std::filesystem::path& file);
std::string sleepCommand(int seconds);

/// Runs a script in a plain shell, and throws BenchError when it fails.
void runInShell(const std::string& script);
/// A script that asks `git` for the top level and the status of the repository at `top`, in the way of a poll.
std::string statusScript(const std::filesystem::path& git, const std::filesystem::path& top);
/// A script that asks `svn` for the status of the working copy at `top`, in the way of a poll.
std::string svnStatusScript(const std::filesystem::path& svn, const std::filesystem::path& top);
/// A script that makes a repository beside the folder `files`, commits these, and checks them out as `top`.
std::string svnCheckoutScript(const std::filesystem::path& files, const std::filesystem::path& top);
/// A script that runs `git` with these arguments in `top`, and one that sends what it writes to nowhere.
std::string gitCommand(const std::filesystem::path& git, const std::filesystem::path& top, const std::string& arguments);
std::string gitScript(const std::filesystem::path& git, const std::filesystem::path& top, const std::string& arguments);
/// A script that has git import a stream into the repository at `top`.
std::string fastImportScript(const std::filesystem::path& top, const std::filesystem::path& stream);
/// What a script writes. Throws BenchError when it cannot be run.
std::string shellOutput(const std::string& script);
/// How much memory this process has in use.
double residentBytes();
/// A script that has `git` write the committed revision of `file` into `copy`.
std::string showScript(const std::filesystem::path& git, const std::filesystem::path& file, const std::filesystem::path& copy);
/// Asks the system for the date of each file and whether it may be written, and does nothing with that.
void readDates(const std::vector<std::string>& files);
/// A script that sends a file through a pipe to nowhere.
std::string pipeScript(const std::filesystem::path& file);

/// Makes a program at `path` that creates the file `marker` and then hangs, whatever its arguments.
void makeHangingTool(const std::filesystem::path& path, const std::filesystem::path& marker);

/// A child that is started and ended with nothing but what the system has for it.
class DirectChild {
public:
    /// Throws BenchError when it cannot be started.
    explicit DirectChild(const std::filesystem::path& program);
    ~DirectChild() { end(); }
    DirectChild(const DirectChild&) = delete;
    DirectChild& operator=(const DirectChild&) = delete;

    /// Kills it and waits for its end.
    void end();

private:
    int m_id = 0;
};

}  // namespace bench
