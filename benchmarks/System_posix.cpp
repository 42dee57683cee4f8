#include "benchmarks/System.h"

#include "benchmarks/Measurement.h"
#include "benchmarks/ScratchFolder.h"
#include "common/CommandQuoting.h"

#include <fcntl.h>
#include <spawn.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <fstream>
#include <memory>
#include <utility>

namespace fs = std::filesystem;

namespace {

double inMilliseconds(const timeval& time)
{
    return static_cast<double>(time.tv_sec) * 1000 + static_cast<double>(time.tv_usec) / 1000;
}

/// A path as one word of a shell script.
std::string quoted(const fs::path& path)
{
    std::string word = "'";
    for (const char character : path.string()) {
        if (character == '\'')
            word += "'\\'";
        word += character;
    }
    return word + "'";
}

}  // namespace

double bench::processorMilliseconds()
{
    rusage usage{};
    getrusage(RUSAGE_SELF, &usage);
    return inMilliseconds(usage.ru_utime) + inMilliseconds(usage.ru_stime);
}

std::string bench::printFileCommand(const fs::path& file)
{
    return std::string("/bin/cat ") + quoteArgument(file.string()).c_str();
}

std::string bench::sleepCommand(int seconds)
{
    return "/bin/sleep " + std::to_string(seconds);
}

void bench::runInShell(const std::string& script)
{
    const int status = std::system(script.c_str());
    if (status != 0)
        throw BenchError("the reference failed with status " + std::to_string(status) + ": " + script);
}

double bench::timeInShell(const std::string& script)
{
    return elapsedMilliseconds([&script] { runInShell(script); });
}

std::string bench::statusScript(const fs::path& git, const fs::path& top, const std::string& options)
{
    const std::string program = quoted(git);
    return "cd " + quoted(top) + " && " + program + " rev-parse --show-toplevel >/dev/null && " + program + " status --porcelain"
           + options + " >/dev/null";
}

std::string bench::svnStatusScript(const fs::path& svn, const fs::path& top)
{
    return quoted(svn) + " status --non-interactive --xml --verbose " + quoted(top) + " >/dev/null";
}

std::string bench::svnCheckoutScript(const fs::path& files, const fs::path& top)
{
    const fs::path repository = files.parent_path() / "repository";
    const std::string url = "\"file://\"" + quoted(repository);
    // Without eatmydata the client flushes every file to the disk, which takes minutes.
    return "svnadmin create " + quoted(repository) + " && eatmydata svn import --quiet --message first " + quoted(files) + " "
           + url + " && eatmydata svn checkout --quiet " + url + " " + quoted(top);
}

std::string bench::gitCommand(const fs::path& git, const fs::path& top, const std::string& arguments)
{
    return "cd " + quoted(top) + " && " + quoted(git) + " --no-pager " + arguments;
}

std::string bench::gitScript(const fs::path& git, const fs::path& top, const std::string& arguments)
{
    return gitCommand(git, top, arguments) + " >/dev/null";
}

std::string bench::gitToFileScript(const fs::path& git, const fs::path& top, const std::string& arguments, const fs::path& file)
{
    return gitCommand(git, top, arguments) + " >" + quoted(file);
}

std::string bench::countScript(const std::string& word, const fs::path& file)
{
    // Not to /dev/null: grep would end at the first match then.
    return "grep -c " + word + " " + quoted(file) + " >" + quoted(fs::path(file) += ".count");
}

std::string bench::fastImportScript(const fs::path& top, const fs::path& stream)
{
    return "cd " + quoted(top) + " && git fast-import --quiet <" + quoted(stream);
}

std::string bench::shellOutput(const std::string& script)
{
    const std::unique_ptr<std::FILE, int (*)(std::FILE*)> pipe(popen(script.c_str(), "r"), &pclose);
    if (!pipe)
        throw BenchError("cannot run " + script);
    std::string output;
    std::array<char, 65536> buffer{};
    while (const std::size_t count = std::fread(buffer.data(), 1, buffer.size(), pipe.get()))
        output.append(buffer.data(), count);
    return output;
}

double bench::residentBytes()
{
    std::ifstream statistics("/proc/self/statm");
    double size = 0;
    double resident = 0;
    if (!(statistics >> size >> resident))
        throw BenchError("the system does not tell the memory of this process");
    return resident * static_cast<double>(sysconf(_SC_PAGESIZE));
}

std::string bench::showScript(const fs::path& git, const fs::path& file, const fs::path& copy)
{
    return "cd " + quoted(file.parent_path()) + " && " + quoted(git) + " --no-pager show HEAD:" + quoted(file.filename()) + " >"
           + quoted(copy);
}

void bench::readDates(const std::vector<std::string>& files)
{
    for (const std::string& file : files) {
        struct stat entry {};
        if (stat(file.c_str(), &entry) != 0 || access(file.c_str(), W_OK) != 0)
            throw BenchError("no date of " + file);
    }
}

std::string bench::pipeScript(const fs::path& file)
{
    return "cat " + quoted(file) + " | cat >/dev/null";
}

void bench::makeHangingTool(const fs::path& path, const fs::path& marker)
{
    writeFile(path, "#!/bin/sh\n: >" + quoted(marker) + "\nexec sleep 600\n");
    fs::permissions(path, fs::perms::owner_all);
}

bench::DirectChild::DirectChild(const fs::path& program)
{
    std::string name = program.string();
    char* arguments[] = {name.data(), nullptr};
    pid_t child = 0;
    const int error = posix_spawn(&child, name.c_str(), nullptr, nullptr, arguments, environ);
    if (error != 0)
        throw BenchError(name + ": " + std::strerror(error));
    m_id = child;
}

void bench::DirectChild::end()
{
    if (m_id == 0)
        return;
    const pid_t child = std::exchange(m_id, 0);
    kill(child, SIGKILL);
    while (waitpid(child, nullptr, 0) < 0 && errno == EINTR) {
    }
}

bench::PipedCommand::PipedCommand(const std::vector<std::string>& words, const fs::path& directory)
{
    int ends[2];
    if (pipe2(ends, O_CLOEXEC) != 0)
        throw BenchError(std::string("no pipe: ") + std::strerror(errno));
    std::vector<char*> arguments;
    for (const std::string& word : words)
        arguments.push_back(const_cast<char*>(word.c_str()));
    arguments.push_back(nullptr);
    m_id = fork();
    if (m_id == 0) {
        if (chdir(directory.c_str()) == 0 && dup2(ends[1], STDOUT_FILENO) >= 0)
            execv(arguments.front(), arguments.data());
        _exit(127);
    }
    close(ends[1]);
    m_output = ends[0];
    if (m_id < 0)
        throw BenchError(words.front() + ": " + std::strerror(errno));
}

bench::PipedCommand::~PipedCommand()
{
    close(m_output);
    if (m_id <= 0)
        return;
    kill(m_id, SIGKILL);
    while (waitpid(m_id, nullptr, 0) < 0 && errno == EINTR) {
    }
}

double bench::PipedCommand::readLines(int lines)
{
    char block[4096];
    while (lines > 0) {
        const ssize_t count = read(m_output, block, sizeof block);
        if (count <= 0)
            throw BenchError("the output of a command is too short");
        lines -= static_cast<int>(std::count(block, block + count, '\n'));
    }
    return std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now() - m_start).count();
}

double bench::PipedCommand::readToEnd()
{
    std::vector<char> block(65536);
    while (read(m_output, block.data(), block.size()) > 0) {
    }
    const double time = std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now() - m_start).count();
    rusage usage{};
    int status = 0;
    while (wait4(m_id, &status, 0, &usage) < 0 && errno == EINTR) {
    }
    m_id = 0;
    if (!WIFEXITED(status) || WEXITSTATUS(status) != 0)
        throw BenchError("a command has failed");
    m_peakBytes = static_cast<double>(usage.ru_maxrss) * 1024;
    return time;
}
