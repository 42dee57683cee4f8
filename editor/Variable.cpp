#include "editor/Variable.h"

#include <algorithm>
#include <charconv>
#include <limits>
#include <string>

namespace {

std::int32_t clipped(std::int64_t number)
{
    using Limits = std::numeric_limits<std::int32_t>;
    return static_cast<std::int32_t>(std::clamp<std::int64_t>(number, Limits::min(), Limits::max()));
}

std::unique_ptr<Variable> copyOfElement(const std::unique_ptr<Variable>& element)
{
    if (!element)
        return nullptr;
    auto copy = std::make_unique<Variable>();
    copy->value = copyOfVariable(element->value);
    return copy;
}

VariableTable copyOfTable(const VariableTable& table)
{
    VariableTable copy;
    for (const auto& [key, element] : table)
        copy.emplace_hint(copy.end(), key, copyOfElement(element));
    return copy;
}

VariableArray copyOfArray(const VariableArray& array)
{
    VariableArray copy;
    copy.reserve(array.size());
    for (const auto& element : array)
        copy.push_back(copyOfElement(element));
    return copy;
}

}  // namespace

std::int32_t decimalAsInt(cmROStringT text)
{
    std::int64_t number = 0;
    const char* const end = text.data() + text.size();
    const auto [stop, error] = std::from_chars(text.data(), end, number);
    if (stop != end || error == std::errc::invalid_argument)
        return 0;
    if (error == std::errc::result_out_of_range)
        number = text.front() == '-' ? std::numeric_limits<std::int64_t>::min() : std::numeric_limits<std::int64_t>::max();
    return clipped(number);
}

std::int32_t variableAsInt(const VariableValue& value)
{
    if (const auto* number = std::get_if<std::int64_t>(&value))
        return clipped(*number);
    const auto* text = std::get_if<cmStringT>(&value);
    return text ? decimalAsInt(*text) : 0;
}

cmStringT variableAsText(const VariableValue& value)
{
    if (const auto* number = std::get_if<std::int64_t>(&value))
        return cmROStringT(std::to_string(*number));
    const auto* text = std::get_if<cmStringT>(&value);
    return text ? *text : cmStringT("");
}

VariableValue copyOfVariable(const VariableValue& value)
{
    if (const auto* text = std::get_if<cmStringT>(&value))
        return *text;
    if (const auto* number = std::get_if<std::int64_t>(&value))
        return *number;
    if (const auto* array = std::get_if<VariableArray>(&value))
        return copyOfArray(*array);
    if (const auto* table = std::get_if<VariableTable>(&value))
        return copyOfTable(*table);
    if (const auto* instance = std::get_if<VariableInstance>(&value))
        return VariableInstance{copyOfTable(instance->fields)};
    return {};
}
