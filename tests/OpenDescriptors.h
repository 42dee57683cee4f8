#pragma once

#include <cstddef>

/// The number of open descriptors or handles of this process.
std::size_t openDescriptors();
