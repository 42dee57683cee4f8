#pragma once

#include "common/cmArray.h"
#include "common/cmString.h"
#include "editor/EditorExport.h"

#include <cstddef>
#include <optional>

enum class ResultKind { none, number, text };
enum class ParameterKind { text, number, variable, stringConst, stringByRef };

/// What the text of a prototype says: "int module:name(TXPSZ, int)".
struct Prototype {
    ResultKind result = ResultKind::none;
    cmStringT module;
    cmStringT name;
    cmArray<ParameterKind> parameters;
};

inline constexpr std::size_t maxParameters = 8;

/// Reads a prototype: a result void, int or TXPSZ, one blank, module and name, and parameters of the kinds TXPSZ, int,
/// TXHREFVAR, TMStringConst and TMStringByRef, with or without blanks after the commas. Nothing for any other text,
/// and for more than maxParameters parameters.
EDITOR_API std::optional<Prototype> parsePrototype(cmROStringT text);
