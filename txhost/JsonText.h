#pragma once

#include "common/cmString.h"
#include "editor/Variable.h"

#include <nlohmann/json.hpp>

/// JSON for people and pipes: keys keep the order in which they were set.
using Json = nlohmann::ordered_json;

/// `value` on one line; bytes that are no UTF-8 are replaced.
cmStringT jsonText(const Json& value);
/// Text as a JSON string.
Json jsonString(cmROStringT text);
/// What an editor variable holds.
Json jsonOfVariable(const VariableValue& value);
/// Fills an editor variable: numbers, texts, arrays and hash tables. For the editor's thread.
void fillVariable(TXHVAR variable, const Json& value);
