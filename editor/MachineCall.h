#pragma once

#include "common/cmArray.h"
#include "txapi/txapi.h"

#include <cstddef>
#include <cstdint>
#include <span>

/// One argument as the machine passes it: a 32-bit integer, or a pointer (references are passed as pointers).
struct MachineArgument {
    std::int32_t number = 0;
    const void* pointer = nullptr;
    bool isPointer = false;

    static MachineArgument ofNumber(std::int32_t number) { return {number, nullptr, false}; }
    static MachineArgument ofPointer(const void* pointer) { return {0, pointer, true}; }
};

inline constexpr std::size_t maxMachineArguments = 8;

/// Calls a function whose result is a Result and whose parameters are what `rest` holds, at most maxMachineArguments.
/// Each step turns the first of them into a true argument, so that the last one knows the function's type as
/// the machine sees it: any pointer is passed like any other, and a reference like a pointer.
template <class Result, class... Done>
Result machineCall(TXPFN function, std::span<const MachineArgument> rest, Done... done)
{
    if (rest.empty())
        return reinterpret_cast<Result (*)(Done...)>(function)(done...);
    if constexpr (sizeof...(Done) < maxMachineArguments) {
        const MachineArgument& next = rest.front();
        if (next.isPointer)
            return machineCall<Result>(function, rest.subspan(1), done..., next.pointer);
        return machineCall<Result>(function, rest.subspan(1), done..., next.number);
    } else {
        return Result();
    }
}
