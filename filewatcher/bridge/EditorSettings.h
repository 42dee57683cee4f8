#pragma once

#include "common/cmString.h"
#include "txapi/txapi.h"

#include <cstdint>

// What the module reads of the editor's variables and macros; for the editor's thread only.

/// The editor's variable of that name, or 0.
TXHVAR findEditorVariable(TXPSZ name);
/// The integer value of a variable, or `missing` when there is no such variable.
std::int32_t editorSetting(TXPSZ name, std::int32_t missing);
/// The string that a macro function without arguments returns; empty when it is missing or cannot be called.
cmStringT callEditorMacro(TXPSZ name);
