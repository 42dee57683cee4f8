#pragma once

#include "common/cmString.h"
#include "txapi/VersionControlTools.h"

#include <cstdint>
#include <filesystem>
#include <string>
#include <vector>

/// A version-control tool as the module and the user know it. TXVCTOOL::number is also the tool number in its records.
struct Tool : TXVCTOOL {
    const char* name;  ///< its name on the command line and in JSON; also the name of its program
};

inline constexpr Tool gitTool{txVCToolGit, "git"};
inline constexpr Tool svnTool{txVCToolSVN, "svn"};
inline constexpr Tool p4Tool{txVCToolPerforce, "p4"};
/// All tools, in the order of the command line's help.
inline constexpr const Tool* allTools[] = {&gitTool, &svnTool, &p4Tool};

/// The names of all tools.
std::vector<std::string> toolNames();
/// The tool with that name; null when there is none.
const Tool* toolNamed(const std::string& name);
/// The tool with that number; git for any other number, because only git writes records for directories without a tool.
const Tool& toolNumbered(std::int32_t number);

/// The tool whose mark (.git, .svn, P4CONFIG file) is in the folder itself. Null when there is none. Throws HostError when the
/// system cannot say.
const Tool* toolMarkedIn(const cmStringT& folder);
/// The tool that a directory belongs to: the first whose mark is in it or in a folder above it. The
/// path is searched as it is and then with its links resolved. Null when there is no mark. Throws HostError when the
/// system cannot say. Reads the disk but starts no program.
const Tool* findMarkedTool(const cmStringT& directory);
/// The same; git when there is no mark.
const Tool& findTool(const cmStringT& directory);
