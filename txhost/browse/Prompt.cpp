#include "txhost/browse/Prompt.h"

#include "txhost/Character.h"
#include "txhost/Console.h"
#include "txhost/TextWidth.h"

#include <algorithm>
#include <array>
#include <string>
#include <utility>

namespace {

constexpr char32_t ctrlU = 0x15;
constexpr char32_t ctrlW = 0x17;
constexpr std::size_t leastBehindText = 2;

cmROStringT captionOf(PromptKind kind)
{
    switch (kind) {
    case PromptKind::search: return "/";
    case PromptKind::filter: return "filter: ";
    case PromptKind::jump: break;
    }
    return ":";
}

void appendUtf8(cmStringT& text, char32_t code)
{
    const auto tail = [code](int shift) { return static_cast<char>(0x80 | (code >> shift & 0x3F)); };
    if (code < 0x80)
        text += static_cast<char>(code);
    else if (code < 0x800)
        text += std::string{static_cast<char>(0xC0 | code >> 6), tail(0)};
    else if (code < 0x10000)
        text += std::string{static_cast<char>(0xE0 | code >> 12), tail(6), tail(0)};
    else
        text += std::string{static_cast<char>(0xF0 | code >> 18), tail(12), tail(6), tail(0)};
}

/// How many bytes the last character has.
std::size_t lastCharacter(cmROStringT text)
{
    std::size_t bytes = 0;
    while (!text.empty())
        bytes = takeCharacter(text).bytes.size();
    return bytes;
}

/// How many bytes the last word has, with the blanks behind it.
std::size_t lastWord(cmROStringT text)
{
    const std::size_t letter = text.find_last_not_of(' ');
    const std::size_t blank = letter == cmROStringT::npos ? letter : text.find_last_of(' ', letter);
    return blank == cmROStringT::npos ? text.size() : text.size() - blank - 1;
}

/// The end of `text` that has room in so many columns.
cmStringT endOf(cmROStringT text, std::size_t columns)
{
    while (!text.empty() && textWidth(shownText(text, text.size())) > columns)
        takeCharacter(text);
    return shownText(text, text.size());
}

}  // namespace

Prompt::Prompt(PromptKind kind, cmStringT text) : m_kind(kind), m_text(std::move(text)) {}

Prompt::Outcome Prompt::press(const Key& key)
{
    switch (key.kind) {
    case KeyKind::enter: return Outcome::accepted;
    case KeyKind::escape: return Outcome::cancelled;
    case KeyKind::character: return type(key.code);
    case KeyKind::backspace: return m_text.isEmpty() ? Outcome::cancelled : erase(lastCharacter(m_text));
    case KeyKind::tab:
    case KeyKind::backTab: choose(key.kind == KeyKind::tab); return Outcome::nothing;
    default: return Outcome::nothing;
    }
}

Prompt::Outcome Prompt::type(char32_t code)
{
    constexpr std::size_t most = 1000;
    if (code == ctrlU || code == ctrlW)
        return erase(code == ctrlU ? m_text.length() : lastWord(m_text));
    const bool isText = code >= 0x20 && code != 0x7F && code <= 0x10FFFF && (code < 0xD800 || code > 0xDFFF);
    if (!isText || m_text.length() > most)
        return Outcome::nothing;
    appendUtf8(m_text, code);
    return Outcome::changed;
}

Prompt::Outcome Prompt::erase(std::size_t bytes)
{
    m_text.truncate(m_text.length() - bytes);
    return Outcome::changed;
}

void Prompt::offer(cmArray<cmStringT> choices)
{
    m_choices = std::move(choices);
    m_chosen = 0;
}

void Prompt::choose(bool forwards)
{
    if (m_choices.empty())
        return;
    const std::size_t count = m_choices.size();
    m_chosen = forwards ? m_chosen % count + 1 : (m_chosen + count - 2) % count + 1;
    m_text = m_choices[m_chosen - 1];
}

std::size_t Prompt::draw(StyledLine& line, cmROStringT remark) const
{
    const std::size_t width = line.room();
    line.add(captionOf(m_kind), {0, true});
    line.add(endOf(m_text, line.room() - std::min(line.room(), leastBehindText)));
    const std::size_t column = width - line.room();
    if (!remark.empty()) {
        line.add("   ");
        line.draw(remark, {console::yellow});
    }
    for (std::size_t i = 0; i < m_choices.size() && line.room() > 3; ++i) {
        line.add("   ");
        line.add(m_choices[i], {console::grey, i + 1 == m_chosen});
    }
    return std::min(column, width - std::min<std::size_t>(width, 1));
}
