#pragma once

#include "common/cmArray.h"
#include "common/cmPath.h"
#include "common/cmString.h"

/// The variables of a process as "NAME=VALUE" texts in UTF-8.
using Environment = cmArray<cmStringT>;

/// Reads the environment of this process. Any thread, but the host must not change its environment at the same moment.
Environment hostEnvironment();

/// The value of a variable; null when it is not set. Names are compared without case on Windows.
cmStringT environmentValue(const Environment& environment, cmROStringT name, cmPathStyle style = cmNativePathStyle);

/// The environment for a tool that is polled: no prompt, no pager, no colour, English messages in UTF-8, no locks, no
/// file-system monitor and no hooks that a repository configures, no fetch of what a partial clone lacks, literal paths, no
/// repository but that of the current directory, and no look for untracked or renamed files in a status.
/// At last the variables of `settings` ("NAME=VALUE") are set or replaced. Each variable occurs once, in the order of `host`,
/// which may have several with one name: then the first is kept. New variables follow.
Environment quietEnvironment(const Environment& host, const Environment& settings = {}, cmPathStyle style = cmNativePathStyle);
/// The same without what quiets a tool.
Environment withVariables(const Environment& environment, const Environment& settings, cmPathStyle style = cmNativePathStyle);
Environment withoutVariable(Environment environment, cmROStringT name, cmPathStyle style = cmNativePathStyle);
/// `environment` in the order that Windows requires for a new process: by name, without case. Of several variables with one
/// name the first is kept.
Environment windowsEnvironmentOrder(Environment environment);
