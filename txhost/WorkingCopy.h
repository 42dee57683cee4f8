#pragma once

#include "common/cmString.h"
#include "txapi/VersionControlTools.h"

#include <cstdint>
#include <string>
#include <vector>

/// A version-control tool as the module and the user know it.
struct Tool : TXVCTOOL {
    const char* name;  ///< on the command line and in JSON; also the program's name
};

inline constexpr Tool gitTool{txVCToolGit, "git"};
inline constexpr Tool svnTool{txVCToolSVN, "svn"};
inline constexpr Tool p4Tool{txVCToolPerforce, "p4"};
/// All tools, in the order in which users are told of them.
inline constexpr const Tool* allTools[] = {&gitTool, &svnTool, &p4Tool};

/// The names of all tools.
std::vector<std::string> toolNames();
/// The tool with that name; null when there is none.
const Tool* toolNamed(const std::string& name);
/// The tool with that number; git for any other, since it alone marks directories that belong to none.
const Tool& toolNumbered(std::int32_t number);

/// The tool that a directory belongs to: the first that has left its mark there or in a folder above, up to the root of the
/// file system, by the path as it is or with its links followed. Null when there is no mark. Reads the disk and starts nothing.
const Tool* findMarkedTool(const cmStringT& directory);
/// The same; git when there is no mark.
const Tool& findTool(const cmStringT& directory);
