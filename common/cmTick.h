#pragma once

#include <chrono>
#include <cstdint>

/// Milliseconds of a clock that never goes back, but starts anew every 49 days. Any thread.
inline std::uint32_t cmTickCount()
{
    using namespace std::chrono;
    return static_cast<std::uint32_t>(duration_cast<milliseconds>(steady_clock::now().time_since_epoch()).count());
}
