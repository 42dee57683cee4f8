#pragma once

#include <cstdint>

// Results of the module's functions and threads that the editor knows by number.
inline constexpr std::int32_t statusAlreadyRunning = -1;
inline constexpr std::int32_t statusPassFailed = -1;  ///< of a status pass: the tool could not answer, or memory ran out
inline constexpr std::int32_t statusGitFailed = -1;   ///< git itself called it a fatal error, or there was nothing to show
inline constexpr std::int32_t statusNoExecutable = -2;
inline constexpr std::int32_t statusFeatureUnavailable = -2173;
inline constexpr std::int32_t statusStopRequested = -102621;
inline constexpr std::int32_t statusLiveDiffFailed = -104357;
inline constexpr std::int32_t statusLiveDiffBusy = -104360;
inline constexpr std::int32_t statusLiveDiffImmediateFailed = -104370;
inline constexpr std::int32_t statusNoGitModel = -104399;
