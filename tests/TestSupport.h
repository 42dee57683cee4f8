#pragma once

#include "common/cmSystemPath.h"

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <functional>
#include <string>
#include <vector>

/// A path as the module has it: UTF-8, in native separators.
std::string text(const std::filesystem::path& path);

/// A folder of its own that goes with the object.
class TempFolder {
public:
    TempFolder();
    ~TempFolder();
    TempFolder(const TempFolder&) = delete;
    TempFolder& operator=(const TempFolder&) = delete;

    const std::filesystem::path& path() const { return m_path; }
    std::filesystem::path operator/(const std::string& name) const { return m_path / cmSystemPath(name); }

private:
    std::filesystem::path m_path;
};

void writeFile(const std::filesystem::path& path, const std::string& content);
std::string readFile(const std::filesystem::path& path);

/// A program that was built beside the tests.
std::string builtProgram(const std::string& name);
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

struct ProgramResult {
    int exitCode = -1;  ///< -1 when it was ended otherwise
    std::string output;
    std::string error;
};
/// Runs a program that was built beside the tests to its end.
ProgramResult runBuilt(const std::string& name, const std::vector<std::string>& arguments);

/// Names that make trouble, of those that this platform's files can have; one is in a folder.
std::vector<std::string> oddFileNames();
std::vector<std::string> oddFolderNames();

// What the system knows of this process.
std::size_t openDescriptors();
std::size_t threadCount();
/// How many living processes run the program at `path`.
std::size_t processesOf(const std::string& path);
void killProcessesOf(const std::string& path);
/// Runs a program in the grammar of CommandLine.h with its output and standard error in these files; its exit code, -1 when
/// it was ended otherwise.
int runInto(const std::string& program, const std::string& arguments, const std::filesystem::path& output,
            const std::filesystem::path& error);
/// How often a test may start a program that would like to do so `wanted` times; on Windows a start takes long.
int affordableStarts(int wanted);
/// How many children of this process have ended and were not reaped; none where there is nothing to reap.
std::size_t zombieChildren();
