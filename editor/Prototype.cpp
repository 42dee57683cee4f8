#include "editor/Prototype.h"

#include <algorithm>
#include <array>
#include <utility>

namespace {

constexpr std::array<std::pair<cmROStringT, ResultKind>, 3> resultNames{{
    {"void", ResultKind::none},
    {"int", ResultKind::number},
    {"TXPSZ", ResultKind::text},
}};

constexpr std::array<std::pair<cmROStringT, ParameterKind>, 5> parameterNames{{
    {"TXPSZ", ParameterKind::text},
    {"int", ParameterKind::number},
    {"TXHREFVAR", ParameterKind::variable},
    {"TMStringConst", ParameterKind::stringConst},
    {"TMStringByRef", ParameterKind::stringByRef},
}};

template <class Table>
auto lookUp(const Table& table, cmROStringT name)
{
    const auto found = std::find_if(table.begin(), table.end(), [&](const auto& row) { return row.first == name; });
    return found == table.end() ? std::nullopt : std::optional(found->second);
}

bool isLetter(char c)
{
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || c == '_';
}

bool isIdentifier(cmROStringT text)
{
    const auto fits = [](char c) { return isLetter(c) || (c >= '0' && c <= '9'); };
    return !text.empty() && isLetter(text.front()) && std::all_of(text.begin(), text.end(), fits);
}

/// Removes the text before `separator`, and the separator, from the front of `text` and returns the former. Returns nothing when
/// there is no separator.
std::optional<cmROStringT> takeUntil(cmROStringT& text, char separator)
{
    const std::size_t at = text.find(separator);
    if (at == cmROStringT::npos)
        return std::nullopt;
    const cmROStringT taken = text.substr(0, at);
    text.remove_prefix(at + 1);
    return taken;
}

bool parseParameters(cmROStringT text, cmArray<ParameterKind>& parameters)
{
    while (true) {
        const std::optional<cmROStringT> before = takeUntil(text, ',');
        const auto kind = lookUp(parameterNames, before.value_or(text));
        if (!kind || parameters.size() == maxParameters)
            return false;
        parameters.push_back(*kind);
        if (!before)
            return true;
        text.remove_prefix(std::min(text.find_first_not_of(' '), text.size()));
    }
}

}  // namespace

std::optional<Prototype> parsePrototype(cmROStringT text)
{
    if (!text.ends_with(')'))
        return std::nullopt;
    text.remove_suffix(1);
    const auto result = lookUp(resultNames, takeUntil(text, ' ').value_or(""));
    const cmROStringT module = takeUntil(text, ':').value_or("");
    const cmROStringT name = takeUntil(text, '(').value_or("");
    if (!result || !isIdentifier(module) || !isIdentifier(name))
        return std::nullopt;
    Prototype prototype{*result, module, name, {}};
    if (!text.empty() && !parseParameters(text, prototype.parameters))
        return std::nullopt;
    return prototype;
}
