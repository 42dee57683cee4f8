#pragma once

#include "common/cmArray.h"
#include "common/cmString.h"
#include "txapi/TXEXPORT.h"

#include <cstddef>
#include <optional>

enum class ResultKind { none, number, text };
enum class ParameterKind { text, number, variable, stringConst, stringByRef };

/// A parsed prototype, such as "int module:name(TXPSZ, int)".
struct Prototype {
    ResultKind result = ResultKind::none;
    cmStringT module;
    cmStringT name;
    cmArray<ParameterKind> parameters;
};

inline constexpr std::size_t maxParameters = 8;

/// Parses a prototype: the result void, int or TXPSZ, one blank, the module, a colon, the name, and in parentheses at most
/// maxParameters parameters of the kinds TXPSZ, int, TXHREFVAR, TMStringConst and TMStringByRef, separated by commas that may be
/// followed by blanks. Returns nothing for any other text.
EDITOR_API std::optional<Prototype> parsePrototype(cmROStringT text);
