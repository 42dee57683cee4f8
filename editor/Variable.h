#pragma once

#include "common/cmArray.h"
#include "common/cmDictionary.h"
#include "common/cmString.h"
#include "txapi/TMIterator.h"

#include <cstdint>
#include <memory>
#include <variant>

struct Variable;

/// Elements never touched yet are null until they are asked for.
using VariableArray = cmArray<std::unique_ptr<Variable>>;
/// Ordered by key, so that walking it survives insertions and removals on the way.
using VariableTable = cmSortedDictionary<cmStringT, std::unique_ptr<Variable>>;
/// An instance of a class of the macro language: all its fields are there from the start.
struct VariableInstance {
    VariableTable fields;
};

/// A 32-bit integer is kept as a 64-bit one: reading it back makes no difference between them.
using VariableValue = std::variant<std::monostate, cmStringT, std::int64_t, VariableArray, VariableTable, VariableInstance>;

/// A value of the editor's macro language.
struct Variable {
    VariableValue value;
    TXHVAR handle = 0;         ///< 0 until somebody asks for it
    bool callerOwned = false;  ///< made by txHvarAlloc, so that txHvarFree may free it
};

/// The integer value: a number, or text that is a decimal number and nothing else; 0 for all others. What does not fit
/// becomes the nearest 32-bit integer.
std::int32_t variableAsInt(const VariableValue& value);
/// The text, or a number in decimal; empty for all others.
cmStringT variableAsText(const VariableValue& value);
/// A copy of its own, without handles.
VariableValue copyOfVariable(const VariableValue& value);

/// `text` as a 32-bit integer, by the rules of variableAsInt.
std::int32_t decimalAsInt(cmROStringT text);
