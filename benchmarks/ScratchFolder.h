#pragma once

#include <cstddef>
#include <filesystem>
#include <string>

/// A temporary folder. The destructor removes it with everything in it.
class ScratchFolder {
public:
    ScratchFolder();
    ~ScratchFolder();
    ScratchFolder(const ScratchFolder&) = delete;
    ScratchFolder& operator=(const ScratchFolder&) = delete;

    std::filesystem::path operator/(const std::string& name) const { return m_path / name; }

private:
    std::filesystem::path m_path;
};

/// Writes a file. Throws BenchError when it cannot.
void writeFile(const std::filesystem::path& path, const std::string& content);
/// Writes a text file of this size. Throws BenchError when it cannot.
void writeLargeFile(const std::filesystem::path& path, std::size_t bytes);
