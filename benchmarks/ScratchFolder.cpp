#include "benchmarks/ScratchFolder.h"

#include "benchmarks/Measurement.h"

#include <algorithm>
#include <fstream>
#include <random>

namespace fs = std::filesystem;

namespace {

std::ofstream openFile(const fs::path& path)
{
    std::ofstream file(path, std::ios::binary);
    if (!file)
        throw BenchError("cannot write " + path.string());
    return file;
}

void finish(std::ofstream& file, const fs::path& path)
{
    file.close();
    if (!file)
        throw BenchError("cannot write " + path.string());
}

}  // namespace

ScratchFolder::ScratchFolder()
{
    std::random_device random;
    m_path = fs::canonical(fs::temp_directory_path()) / ("filewatcher-bench-" + std::to_string(random()));
    fs::create_directories(m_path);
}

ScratchFolder::~ScratchFolder()
{
    std::error_code ignored;
    fs::remove_all(m_path, ignored);
}

void writeFile(const fs::path& path, const std::string& content)
{
    std::ofstream file = openFile(path);
    file << content;
    finish(file, path);
}

void writeLargeFile(const fs::path& path, std::size_t bytes)
{
    std::string block;
    for (int number = 0; block.size() < (1u << 20); ++number)
        block += "line " + std::to_string(number) + " of a long output\n";
    std::ofstream file = openFile(path);
    for (std::size_t left = bytes; left > 0; left -= std::min(left, block.size()))
        file.write(block.data(), static_cast<std::streamsize>(std::min(left, block.size())));
    finish(file, path);
}
