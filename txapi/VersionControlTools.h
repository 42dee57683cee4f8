#pragma once

#include <cstdint>

/// What the editor and the module share about one version-control tool. The texts are literals.
struct TXVCTOOL {
    std::int32_t number;                ///< TXVCRECORD::tool; also the tool's watch type, and its bit in type masks
    std::int32_t secondWatchType;       ///< another watch type, which is no bit of a mask; 0: none
    const char* exePathMacro;           ///< macro function that returns the path of the executable
    const char* intervalSetting;        ///< seconds between two passes over a path
    const char* showFileStatusSetting;  ///< 0 switches the tool's file status off
};

inline constexpr TXVCTOOL txVCToolSVN{1, 16, "_SVNGetExePath", "def_svn_update_interval", "def_svn_show_file_status"};
inline constexpr TXVCTOOL txVCToolPerforce{4, 0, "_PerforceGetExePath", "def_perforce_update_interval",
                                           "def_perforce_show_file_status"};
inline constexpr TXVCTOOL txVCToolGit{8, 32, "_GitGetExePath", "def_git_update_interval", "def_git_show_file_status"};
inline constexpr const TXVCTOOL* txVCTools[] = {&txVCToolSVN, &txVCToolPerforce, &txVCToolGit};

/// The setting for the most bytes that one run of any tool may write.
inline constexpr const char* txVCMaxOutputSetting = "def_vc_max_status_output_size";
