#pragma once

#include <cstdint>
#include <exception>

inline constexpr std::int32_t cmStatusPipeFailed = -102696;  ///< no pipe, or a command's output is incomplete
inline constexpr std::int32_t cmStatusProcessFailed = -102646;

/// Thrown by a library operation that failed. Carries the status; the message is empty.
class cmStatusException : public std::exception {
public:
    explicit cmStatusException(std::int32_t status) : m_status(status) {}
    std::int32_t status() const { return m_status; }
    const char* what() const noexcept override { return ""; }

private:
    std::int32_t m_status;
};
