#include "txhost/JsonText.h"

#include "txapi/txapi.h"
#include "txhost/Character.h"

#include <array>
#include <cstdio>
#include <string>
#include <type_traits>

namespace {

void fill(Json& json, const VariableValue& value);

void fillObject(Json& json, const VariableTable& table)
{
    json = Json::object();
    json.get_ref<Json::object_t&>().reserve(table.size());
    for (const auto& [key, element] : table) {
        Json& member = json[key.c_str()];
        if (element)
            fill(member, element->value);
    }
}

/// Fills in place, so that there is never a second owner of what may be large.
void fill(Json& json, const VariableValue& value)
{
    const auto convert = [&json](const auto& held) {
        using Held = std::decay_t<decltype(held)>;
        if constexpr (std::is_same_v<Held, cmStringT>) {
            json = jsonString(held);
        } else if constexpr (std::is_same_v<Held, std::int64_t>) {
            json = held;
        } else if constexpr (std::is_same_v<Held, VariableArray>) {
            json = Json::array();
            for (const auto& element : held) {
                Json& added = json.emplace_back();
                if (element)
                    fill(added, element->value);
            }
        } else if constexpr (std::is_same_v<Held, VariableTable>) {
            fillObject(json, held);
        } else if constexpr (std::is_same_v<Held, VariableInstance>) {
            fillObject(json, held.fields);
        }
    };
    std::visit(convert, value);
}

/// Removes what is in `json`, the innermost values first.
void empty(Json& json)
{
    if (auto* array = json.get_ptr<Json::array_t*>()) {
        for (Json& element : *array)
            empty(element);
        array->clear();
    } else if (auto* object = json.get_ptr<Json::object_t*>()) {
        for (auto& [key, member] : *object)
            empty(member);
        object->clear();
    }
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

VariableJson::VariableJson(const VariableValue& value) : VariableJson()  // so that the destructor runs when memory runs out
{
    fill(m_json, value);
}

VariableJson::~VariableJson()
{
    empty(m_json);
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
