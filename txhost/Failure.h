#pragma once

#include "common/cmString.h"

#include <cstdint>
#include <stdexcept>
#include <string>

/// Why something that was asked for has no answer.
struct Failure {
    static constexpr std::int32_t own = 1;            ///< txhost itself cannot answer
    static constexpr std::int32_t server = 2;         ///< the local status is right, but the server gave no answer
    static constexpr std::int32_t stopped = -102621;  ///< by Ctrl-C

    std::int32_t code = own;  ///< one of these, or a negative status of the module
    cmStringT message;        ///< the tool's or the system's own words where there are any
    cmStringT path = {};      ///< the file or directory that it is about, if any
    cmROStringT tool = {};    ///< the name of the tool that could not answer, if any; it lives as long as the program

    bool operator==(const Failure&) const = default;
};

/// The failure with a status code of the module. `reason` is what the tool or the system said; null: the code's meaning is told.
Failure failureOf(std::int32_t status, const cmStringT& reason, const cmStringT& path, cmROStringT tool);
/// An explanation of a status code of the module for the user; null for a number that is no status code.
cmStringT meaningOfStatus(std::int32_t status);
/// "PATH: TOOL: CODE, MESSAGE". Without the code when it is txhost's own, or `stopped`.
cmStringT failureText(const Failure& failure);

/// A failure that ends the program with exit code 1.
class HostError : public std::runtime_error {
public:
    explicit HostError(const Failure& failure) : std::runtime_error(failureText(failure).c_str()), m_failure(failure) {}
    explicit HostError(const std::string& message) : HostError(Failure{Failure::own, cmROStringT(message)}) {}
    HostError(cmROStringT path, const std::string& message) : HostError(Failure{Failure::own, cmROStringT(message), path}) {}

    const Failure& failure() const { return m_failure; }

private:
    Failure m_failure;
};

/// Wrong usage that the parser of the command line cannot detect; the program ends with exit code 2.
class UsageError : public HostError {
public:
    using HostError::HostError;
};
