#pragma once

#include "common/cmArray.h"
#include "txapi/txapi.h"

#include <cstddef>
#include <cstdint>
#include <span>

/// One argument as the calling convention passes it: a 32-bit integer, or a pointer. A reference is passed as a pointer.
struct MachineArgument {
    std::int32_t number = 0;
    const void* pointer = nullptr;
    bool isPointer = false;

    static MachineArgument ofNumber(std::int32_t number) { return {number, nullptr, false}; }
    static MachineArgument ofPointer(const void* pointer) { return {0, pointer, true}; }
};

inline constexpr std::size_t maxMachineArguments = 8;

/// Calls `function`, which returns a Result and takes the arguments in `rest`, at most maxMachineArguments.
/// Each recursion moves one argument from `rest` to `done`, whose types then make up the function's type. The real parameter
/// types need not be known, since all pointers and references are passed in the same way.
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
