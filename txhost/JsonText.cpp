#include "txhost/JsonText.h"

#include "txapi/txapi.h"
#include "txhost/Character.h"

#include <array>
#include <cstdio>
#include <string>
#include <type_traits>

namespace {

Json jsonOfTable(const VariableTable& table)
{
    Json object = Json::object();
    for (const auto& [key, element] : table)
        object[key.c_str()] = element ? jsonOfVariable(element->value) : Json();
    return object;
}

}  // namespace

cmStringT jsonText(const Json& value)
{
    const std::string whole = value.dump(-1, ' ', false, Json::error_handler_t::replace);
    cmStringT text("");
    for (cmROStringT rest = whole; !rest.empty();) {
        const Character character = takeCharacter(rest);
        if (!isControl(character) && !isTerminalControl(character)) {
            text += character.bytes;
            continue;
        }
        std::array<char, 8> escape{};
        std::snprintf(escape.data(), escape.size(), "\\u%04X", static_cast<unsigned>(character.code));
        text += escape.data();
    }
    return text;
}

Json jsonString(cmROStringT text)
{
    return Json(std::string(text));
}

Json jsonOfVariable(const VariableValue& value)
{
    const auto convert = [](const auto& held) -> Json {
        using Held = std::decay_t<decltype(held)>;
        if constexpr (std::is_same_v<Held, cmStringT>) {
            return jsonString(held);
        } else if constexpr (std::is_same_v<Held, std::int64_t>) {
            return held;
        } else if constexpr (std::is_same_v<Held, VariableArray>) {
            Json array = Json::array();
            for (const auto& element : held)
                array.push_back(element ? jsonOfVariable(element->value) : Json());
            return array;
        } else if constexpr (std::is_same_v<Held, VariableTable>) {
            return jsonOfTable(held);
        } else if constexpr (std::is_same_v<Held, VariableInstance>) {
            return jsonOfTable(held.fields);
        } else {
            return nullptr;
        }
    };
    return std::visit(convert, value);
}

void fillVariable(TXHVAR variable, const Json& value)
{
    if (value.is_object()) {
        for (const auto& [key, element] : value.items())
            fillVariable(txHvarHashElement(variable, key.c_str(), txCreateMissing), element);
    } else if (value.is_array()) {
        for (std::size_t i = 0; i < value.size(); ++i)
            fillVariable(txHvarArrayElement(variable, static_cast<std::int32_t>(i), txCreateMissing), value[i]);
    } else if (value.is_number_integer()) {
        txHvarSetInt64(variable, value.get<std::int64_t>());
    } else if (value.is_boolean()) {
        txHvarSetInt(variable, value.get<bool>() ? 1 : 0);
    } else if (value.is_string()) {
        txHvarSetString(variable, cmROStringT(value.get_ref<const std::string&>()));
    } else if (!value.is_null()) {
        txHvarSetString(variable, cmROStringT(value.dump()));
    }
}
