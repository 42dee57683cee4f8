#pragma once

#include "common/cmSystemPath.h"
#include "tests/HelperSystem.h"

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <functional>
#include <string>
#include <vector>

namespace fs = std::filesystem;

using Texts = std::vector<std::string>;

/// A path in the module's form: UTF-8, native separators.
std::string text(const fs::path& path);

/// A new temporary folder, removed with the object.
class TempFolder {
public:
    TempFolder();
    ~TempFolder();
    TempFolder(const TempFolder&) = delete;
    TempFolder& operator=(const TempFolder&) = delete;

    const fs::path& path() const { return m_path; }
    fs::path operator/(const std::string& name) const { return m_path / cmSystemPath(name); }

private:
    fs::path m_path;
};

void writeFile(const fs::path& path, const std::string& content);
std::string readFile(const fs::path& path);

/// The path of a program that was built beside the tests.
std::string builtProgram(const std::string& name);
/// A copy of the helper program in `folder` that behaves as `behaviour` says, whatever its arguments.
std::string helperAs(const TempFolder& folder, const std::string& behaviour);

/// Polls until `condition` holds or `limit` has passed. Returns whether it holds.
bool eventually(const std::function<bool()>& condition, std::chrono::milliseconds limit = std::chrono::seconds(10));

/// Runs git in `directory` and returns its output. Fails the test when git reports an error.
std::string git(const fs::path& directory, const Texts& arguments);
/// Creates a repository in `directory` with an identity of its own and, unless `names` is empty, one commit of these files.
void makeRepository(const fs::path& directory, const Texts& names = {});
/// Writes these files and commits everything.
void commitFiles(const fs::path& directory, const Texts& names);

/// Deletes the loose object of this hash, as a damaged disk would.
void loseObject(const std::filesystem::path& repository, const std::string& hash);

struct ProgramResult {
    int exitCode = -1;  ///< -1 when it did not exit by itself
    std::string output;
    std::string error;
};
/// Runs a program that was built beside the tests, and waits for its end.
ProgramResult runBuilt(const std::string& name, const Texts& arguments);

/// Difficult names that files can have on this platform; one is in a folder.
Texts oddFileNames();
Texts oddFolderNames();

// The system's view of this process.
std::size_t threadCount();
/// The number of running processes of the program at `path`; zombies do not count.
std::size_t processesOf(const std::string& path);
void killProcessesOf(const std::string& path);
/// Runs a program with `arguments` in the grammar of CommandLine.h, and its output and standard error in these files. Returns its
/// exit code, -1 when it did not exit by itself.
int runInto(const std::string& program, const std::string& arguments, const fs::path& output, const fs::path& error);
/// `wanted` starts of a program, reduced where a start takes long.
int affordableStarts(int wanted);
/// The number of this process's children, running or not yet reaped; 0 where there is nothing to reap.
std::size_t childProcesses();
