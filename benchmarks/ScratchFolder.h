#pragma once

#include <cstddef>
#include <filesystem>
#include <string>

/// A temporary folder that goes with the object.
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

/// Throw BenchError when the file cannot be written.
void writeFile(const std::filesystem::path& path, const std::string& content);
void writeLargeFile(const std::filesystem::path& path, std::size_t bytes);
