#include "txhost/Console.h"

#include "common/Environment.h"
#include "common/cmStringCatHelper.h"

#include <array>
#include <cstdint>
#include <cstdio>
#include <ctime>
#include <string>

namespace {

/// Removes one character from the front of UTF-8 text, or one byte that starts no character. Returns its width in columns.
std::size_t takeCharacter(cmROStringT& text, cmROStringT& character)
{
    const auto byteAt = [&text](std::size_t i) { return static_cast<unsigned char>(text[i]); };
    const unsigned char first = byteAt(0);
    const std::size_t length = first < 0xC0 ? 1 : first < 0xE0 ? 2 : first < 0xF0 ? 3 : 4;
    std::uint32_t code = length == 1 ? first : first & (0x7Fu >> length);
    std::size_t taken = 1;
    for (; taken < length && taken < text.size() && (byteAt(taken) & 0xC0) == 0x80; ++taken)
        code = code << 6 | (byteAt(taken) & 0x3Fu);
    character = text.substr(0, taken);
    text.remove_prefix(taken);
    const bool combining = (code >= 0x300 && code <= 0x36F) || (code >= 0x200B && code <= 0x200F) || code == 0xFE0F;
    const bool wide = (code >= 0x1100 && code <= 0x115F) || (code >= 0x2E80 && code <= 0xA4CF)
                      || (code >= 0xAC00 && code <= 0xD7A3) || (code >= 0xF900 && code <= 0xFAFF)
                      || (code >= 0xFE30 && code <= 0xFE6F) || (code >= 0xFF00 && code <= 0xFF60)
                      || (code >= 0x1F300 && code <= 0x1FAFF) || (code >= 0x20000 && code <= 0x3FFFD);
    return combining ? 0 : wide ? 2 : 1;
}

bool userWantsColours()
{
    static const bool wanted = [] {
        const Environment environment = hostEnvironment();
        return environmentValue(environment, "NO_COLOR").isEmpty() && environmentValue(environment, "TERM") != "dumb";
    }();
    return wanted;
}

}  // namespace

std::size_t console::widthOf(cmROStringT text)
{
    std::size_t columns = 0;
    cmROStringT character;
    while (!text.empty())
        columns += takeCharacter(text, character);
    return columns;
}

cmStringT console::shortened(cmROStringT text, std::size_t columns)
{
    if (widthOf(text) <= columns)
        return text;
    cmStringT kept("");
    cmROStringT character;
    for (std::size_t used = takeCharacter(text, character); used < columns; used += takeCharacter(text, character))
        kept += character;
    kept += columns == 0 ? "" : "\u2026";
    return kept;
}

void console::showProgress(cmROStringT text)
{
    static bool shown = false;
    if (!isErrorTerminal() || (text.empty() && !shown))
        return;
    shown = !text.empty();
    std::fprintf(stderr, "\r%.*s\033[K", static_cast<int>(text.size()), text.data());
    std::fflush(stderr);
}

void console::printLine(cmROStringT line)
{
    std::fwrite(line.data(), 1, line.size(), stdout);
    std::fputc('\n', stdout);
    std::fflush(stdout);
}

bool console::isOutputComplete()
{
    if (!std::ferror(stdout))
        return true;
    if (!isReaderGone())
        printError("standard output cannot be written");
    return false;
}

void console::printInterrupted()
{
    if (!isReaderGone())
        printError("interrupted");
}

void console::printError(cmROStringT line)
{
    const cmStringT text = cmCat("txhost: ") + line + "\n";
    std::fwrite(text.c_str(), 1, text.length(), stderr);
}

cmStringT console::printable(cmROStringT text)
{
    cmStringT shown("");
    for (const char c : text) {
        std::array<char, 8> escape{c};
        if (static_cast<unsigned char>(c) < 0x20 || c == 0x7F)
            std::snprintf(escape.data(), escape.size(), "\\x%02X", static_cast<unsigned>(c));
        shown += escape.data();
    }
    return shown;
}

cmStringT console::coloured(int colour, cmROStringT text)
{
    if (!isTerminal() || text.empty() || !userWantsColours())
        return text;
    const std::string number = std::to_string(colour);
    return cmCat("\033[") + number + "m" + text + "\033[0m";
}

cmStringT console::timeOfDay()
{
    const std::time_t now = std::time(nullptr);
    std::array<char, 16> text{};
    std::strftime(text.data(), text.size(), "%H:%M:%S",
                  std::localtime(&now));  // localtime is not thread-safe; only the main thread calls this
    return text.data();
}
