#pragma once

#include "common/cmArray.h"
#include "common/cmPath.h"
#include "common/cmString.h"

/// A list of "NAME=VALUE" texts, UTF-8.
using Environment = cmArray<cmStringT>;

/// The environment of this process, read anew at each call. A host that changes it at that moment races with this, as with
/// every program that starts another.
Environment hostEnvironment();

/// The value of a variable, or null. Names are compared without case on Windows.
cmStringT environmentValue(const Environment& environment, cmROStringT name, cmPathStyle style = cmNativePathStyle);

/// The host's environment as a polled tool should see it: no prompt, no pager, no colour, English messages, UTF-8,
/// no lock taken, no file-system monitor that a repository names, paths taken literally, no repository but the one it
/// stands in.
/// Variables come once each; their order is that of `host`.
Environment quietEnvironment(const Environment& host, cmPathStyle style = cmNativePathStyle);
/// `environment` with `NAME=VALUE` texts set or replaced.
Environment withVariables(Environment environment, const Environment& settings, cmPathStyle style = cmNativePathStyle);
/// The order in which Windows wants a new process's variables: by name, without case; of those with one name the first stays.
Environment windowsEnvironmentOrder(Environment environment);
