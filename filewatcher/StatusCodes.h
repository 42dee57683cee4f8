#pragma once

#include <cstdint>

// Status codes of the module's functions and threads. The editor knows their numbers.
inline constexpr std::int32_t statusAlreadyRunning = -1;
inline constexpr std::int32_t statusPassFailed = -1;  ///< status pass: the tool failed, or memory ran out
inline constexpr std::int32_t statusGitFailed = -1;   ///< git reported a fatal error, or there was nothing to show
inline constexpr std::int32_t statusNoExecutable = -2;
inline constexpr std::int32_t statusOutOfMemory = -12;
inline constexpr std::int32_t statusFeatureUnavailable = -2173;
inline constexpr std::int32_t statusStopRequested = -102621;
inline constexpr std::int32_t statusLiveDiffFailed = -104357;
inline constexpr std::int32_t statusLiveDiffBusy = -104360;
inline constexpr std::int32_t statusLiveDiffImmediateFailed = -104370;
inline constexpr std::int32_t statusNoGitModel = -104399;
