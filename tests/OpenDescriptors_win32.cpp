#include "tests/HelperSystem.h"

#include <windows.h>

#include <cstdint>

std::size_t openDescriptors()
{
    std::size_t count = 0;
    for (std::uintptr_t value = 4; value < 0x4000; value += 4) {  // handles are multiples of four and the lowest free one is used
        DWORD flags = 0;
        count += GetHandleInformation(reinterpret_cast<HANDLE>(value), &flags) != 0;
    }
    return count;
}
