#pragma once

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <functional>
#include <string>
#include <vector>

/// A folder of its own that goes with the object.
class TempFolder {
public:
    TempFolder();
    ~TempFolder();
    TempFolder(const TempFolder&) = delete;
    TempFolder& operator=(const TempFolder&) = delete;

    const std::filesystem::path& path() const { return m_path; }
    std::filesystem::path operator/(const std::string& name) const { return m_path / name; }

private:
    std::filesystem::path m_path;
};

void writeFile(const std::filesystem::path& path, const std::string& content);
std::string readFile(const std::filesystem::path& path);

/// A copy of the helper program in `folder` that behaves as `behaviour` says, whatever its arguments.
std::string helperAs(const TempFolder& folder, const std::string& behaviour);

/// Asks until `condition` holds or `limit` has passed; returns whether it holds.
bool eventually(const std::function<bool()>& condition, std::chrono::milliseconds limit = std::chrono::seconds(10));

/// Runs git in `directory`; fails the test when git fails. Returns its output.
std::string git(const std::filesystem::path& directory, const std::vector<std::string>& arguments);
/// A new repository in `directory` with an identity of its own, and one commit of these files when there are any.
void makeRepository(const std::filesystem::path& directory, const std::vector<std::string>& names = {});
/// Commits all there is, these new files included.
void commitFiles(const std::filesystem::path& directory, const std::vector<std::string>& names);

// What the system knows of this process.
std::size_t openDescriptors();
std::size_t threadCount();
/// How many living processes run the program at `path`.
std::size_t processesOf(const std::string& path);
void killProcessesOf(const std::string& path);
/// Runs a line of the shell; its exit code, -1 when it was ended otherwise.
int runShell(const std::string& line);
/// What Ctrl-C in a terminal does to a process.
void interruptProcess(std::uint32_t id);
/// How many children of this process have ended and were not reaped.
std::size_t zombieChildren();
