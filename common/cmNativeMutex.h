#pragma once

#include <cstddef>

/// What the platform gives for a recursive lock, made in storage of the caller; only cmMutex uses it.
namespace cmNativeMutex {

inline constexpr std::size_t storageSize = 64;  ///< room enough on every platform; the back ends check it

void create(std::byte* storage);
void lock(std::byte* storage);
void unlock(std::byte* storage);
void destroy(std::byte* storage);

}  // namespace cmNativeMutex
