#pragma once

#include "common/cmString.h"
#include "editor/Variable.h"

#include <nlohmann/json.hpp>

/// A JSON value whose objects keep their keys in the order of insertion.
using Json = nlohmann::ordered_json;

/// `value` as JSON text on one line. Bytes that are no UTF-8 are replaced; what a terminal may obey is written as \uXXXX.
cmStringT jsonText(const Json& value);
/// `text` as a JSON string.
Json jsonString(cmROStringT text);

/// The value of an editor variable as JSON; null for an empty one. It is freed without an allocation: the destructor of the JSON
/// library allocates for a large array, and ends the program where that fails.
class VariableJson {
public:
    explicit VariableJson(const VariableValue& value);
    ~VariableJson();
    VariableJson(const VariableJson&) = delete;
    VariableJson& operator=(const VariableJson&) = delete;

    Json& operator*() { return m_json; }

private:
    VariableJson() = default;

    Json m_json;
};

/// Stores a JSON value in an editor variable: objects become hash tables, booleans integers, fractions strings; null changes
/// nothing. For the editor's thread.
void fillVariable(TXHVAR variable, const Json& value);
