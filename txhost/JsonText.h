#pragma once

#include "common/cmArray.h"
#include "common/cmString.h"
#include "editor/Variable.h"
#include "txhost/Failure.h"

#include <nlohmann/json.hpp>

#include <string>

/// A JSON value whose objects keep their keys in the order of insertion.
using Json = nlohmann::ordered_json;

/// `value` as JSON text on one line. Bytes that are no UTF-8 are replaced; what a terminal may obey is written as \uXXXX.
cmStringT jsonText(const Json& value);
/// `text` as a JSON string.
Json jsonString(cmROStringT text);
/// Adds a name to an object. Beside one that is no UTF-8 stand its bytes in Base64, at KEYBase64.
void addName(Json& object, const std::string& key, cmROStringT name);
/// The same for a list of names. Where one is no UTF-8, KEYBase64 is a list of the bytes of all.
void addNames(Json& object, const std::string& key, const cmArray<cmStringT>& names);
/// The texts of a JSON array; none for any other value.
cmArray<cmStringT> textsOf(const Json& array);
/// The failure as an object: "error", "message", and what it is about.
Json failureJson(const Failure& failure);
/// Prints a value as one line, and frees it without an allocation (see VariableJson).
void printJson(Json value);
/// Prints a failure: as text on standard error and, with `json`, also as an object on standard output.
void printFailure(const Failure& failure, bool json);

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
