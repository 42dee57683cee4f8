#pragma once

#include "common/cmArray.h"
#include "common/cmDictionary.h"
#include "common/cmString.h"
#include "txapi/TMIterator.h"

#include <cstdint>
#include <memory>
#include <variant>

struct Variable;

/// An element that nobody has asked for is null.
using VariableArray = cmArray<std::unique_ptr<Variable>>;
/// Ordered by key, so that an iterator can continue after its last key when elements were added or removed.
using VariableTable = cmSortedDictionary<cmStringT, std::unique_ptr<Variable>>;
/// An instance of a class of the macro language. It has all fields of its class from the start.
struct VariableInstance {
    VariableTable fields;
};

/// The value of a variable; monostate is the empty value. 32-bit integers are stored as 64-bit ones.
using VariableValue = std::variant<std::monostate, cmStringT, std::int64_t, VariableArray, VariableTable, VariableInstance>;

/// A variable of the editor's macro language.
struct Variable {
    VariableValue value;
    TXHVAR handle = 0;         ///< assigned when it is first asked for; 0 until then
    bool callerOwned = false;  ///< created by txHvarAlloc; only then may txHvarFree free it
};

/// The integer value: that of a number, or of a string that is a decimal number and nothing else; 0 for anything else. A number
/// that does not fit becomes the nearest 32-bit integer.
std::int32_t variableAsInt(const VariableValue& value);
/// The string value: a string as it is, a number in decimal, anything else as the empty string.
cmStringT variableAsText(const VariableValue& value);
/// A deep copy; its elements have no handles.
VariableValue copyOfVariable(const VariableValue& value);

/// The integer value of a string, by the rules of variableAsInt.
std::int32_t decimalAsInt(cmROStringT text);
