#include "txhost/JsonText.h"

#include "txapi/txapi.h"
#include "txhost/Character.h"
#include "txhost/Console.h"

#include <algorithm>
#include <array>
#include <cstdio>
#include <string>
#include <type_traits>
#include <utility>

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

bool isUTF8(cmROStringT text)
{
    while (!text.empty()) {
        if (!takeCharacter(text).isValid)
            return false;
    }
    return true;
}

std::string base64(cmROStringT bytes)
{
    constexpr cmROStringT digits = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
    std::string text;
    for (std::size_t at = 0; at < bytes.size(); at += 3) {
        std::uint32_t group = 0;
        for (std::size_t i = 0; i < 3; ++i)
            group = group << 8 | (at + i < bytes.size() ? static_cast<unsigned char>(bytes[at + i]) : 0u);
        for (std::size_t i = 0; i < 4; ++i)
            text += at + i <= bytes.size() ? digits[group >> (18 - 6 * i) & 63] : '=';
    }
    return text;
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

void addName(Json& object, const std::string& key, cmROStringT name)
{
    object[key] = jsonString(name);
    if (!isUTF8(name))
        object[key + "Base64"] = base64(name);
}

void addNames(Json& object, const std::string& key, const cmArray<cmStringT>& names)
{
    Json& texts = object[key] = Json::array();
    for (const cmStringT& name : names)
        texts.push_back(jsonString(name));
    if (std::all_of(names.begin(), names.end(), &isUTF8))
        return;
    Json& bytes = object[key + "Base64"] = Json::array();
    for (const cmStringT& name : names)
        bytes.push_back(base64(name));
}

cmArray<cmStringT> textsOf(const Json& array)
{
    cmArray<cmStringT> texts;
    for (std::size_t i = 0; array.is_array() && i < array.size(); ++i)
        texts.push_back(cmROStringT(array[i].get_ref<const std::string&>()));
    return texts;
}

Json failureJson(const Failure& failure)
{
    Json object{{"error", failure.code}, {"message", jsonString(failure.message)}};
    if (!failure.path.isNull())
        addName(object, "path", failure.path);
    if (!failure.tool.empty())
        object["tool"] = jsonString(failure.tool);
    return object;
}

void printJson(Json value)
{
    console::printLine(jsonText(value));
    empty(value);
}

void printFailure(const Failure& failure, bool json)
{
    if (console::isReaderGone())
        return;
    if (json)
        printJson(failureJson(failure));
    console::printError(failureText(failure));
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
