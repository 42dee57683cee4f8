#include "txhost/browse/Key.h"

#include "txhost/Character.h"

#include <algorithm>
#include <charconv>
#include <iterator>

namespace {

struct KeyName {
    cmROStringT name;
    Key key;
};

constexpr KeyName names[] = {
    {"Enter", {KeyKind::enter}},
    {"Esc", {KeyKind::escape}},
    {"Tab", {KeyKind::tab}},
    {"BackTab", {KeyKind::backTab}},
    {"Backspace", {KeyKind::backspace}},
    {"Up", {KeyKind::up}},
    {"Down", {KeyKind::down}},
    {"Left", {KeyKind::left}},
    {"Right", {KeyKind::right}},
    {"PageUp", {KeyKind::pageUp}},
    {"PageDown", {KeyKind::pageDown}},
    {"Home", {KeyKind::home}},
    {"End", {KeyKind::end}},
    {"Space", {KeyKind::character, U' '}},
    {"lt", {KeyKind::character, U'<'}},
};

/// They stand before ":ROW,COLUMN".
constexpr KeyName mouseNames[] = {
    {"Click", {KeyKind::click}},
    {"DoubleClick", {KeyKind::doubleClick}},
    {"WheelUp", {KeyKind::wheelUp}},
    {"WheelDown", {KeyKind::wheelDown}},
};

template <std::size_t count>
std::optional<Key> keyNamed(const KeyName (&known)[count], cmROStringT name)
{
    const auto* const found = std::find_if(std::begin(known), std::end(known), [&](const KeyName& k) { return k.name == name; });
    if (found == std::end(known))
        return std::nullopt;
    return found->key;
}

bool readNumber(cmROStringT text, std::size_t& number)
{
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    return error == std::errc() && end == text.data() + text.size();
}

std::optional<Key> mouseKey(cmROStringT name)
{
    const cmROStringT kind = cmTakeUntil(name, ':');
    const cmROStringT row = cmTakeUntil(name, ',');
    std::optional<Key> key = keyNamed(mouseNames, kind);
    if (!key || !readNumber(row, key->row) || !readNumber(name, key->column))
        return std::nullopt;
    return key;
}

/// `name` is what stands between the brackets.
std::optional<Key> keyInBrackets(cmROStringT name)
{
    if (name.size() == 3 && name.starts_with("C-")) {
        const char letter = cmLowerAscii(name)[2];
        if (letter < 'a' || letter > 'z')
            return std::nullopt;
        return keyOfCharacter(static_cast<char32_t>(letter - 'a' + 1));
    }
    const std::optional<Key> key = keyNamed(names, name);
    return key ? key : mouseKey(name);
}

}  // namespace

Key keyOfCharacter(char32_t code)
{
    switch (code) {
    case U'\t': return {KeyKind::tab};
    case U'\n':
    case U'\r': return {KeyKind::enter};
    case 0x1B: return {KeyKind::escape};
    case U'\b':
    case 0x7F: return {KeyKind::backspace};
    default: return {KeyKind::character, code};
    }
}

std::optional<cmArray<Key>> keysFromText(cmROStringT text)
{
    cmArray<Key> keys;
    while (!text.empty()) {
        const Character character = takeCharacter(text);
        if (!character.isValid)
            return std::nullopt;
        if (character.code != '<') {
            keys.push_back(keyOfCharacter(static_cast<char32_t>(character.code)));
            continue;
        }
        const bool isClosed = text.find('>') != cmROStringT::npos;
        const std::optional<Key> key = keyInBrackets(cmTakeUntil(text, '>'));
        if (!isClosed || !key)
            return std::nullopt;
        keys.push_back(*key);
    }
    return keys;
}
