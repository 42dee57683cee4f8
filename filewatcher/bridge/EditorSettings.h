#pragma once

#include "common/cmString.h"
#include "txapi/txapi.h"

#include <cstdint>

// Access to the editor's variables and macro functions by name. For the editor's thread only.

/// Returns the handle of the editor variable `name`, or 0 when there is none.
TXHVAR findEditorVariable(TXPSZ name);
/// Returns the integer value of a variable, or `missing` when there is no such variable.
std::int32_t editorSetting(TXPSZ name, std::int32_t missing);
/// Calls a macro function without arguments and returns its string result; empty when there is no such function, it cannot be
/// called, or it fails. The macro may call registered functions in turn.
cmStringT callEditorMacro(TXPSZ name);
