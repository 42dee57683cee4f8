#pragma once

#include <filesystem>
#include <string>

/// What git writes in `directory`. Throws BenchError when it cannot be started or complains.
std::string runGit(const std::filesystem::path& directory, const std::string& arguments);
/// An empty repository with an identity of its own.
void makeRepository(const std::filesystem::path& top);
