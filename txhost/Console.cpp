#include "txhost/Console.h"

#include "common/Environment.h"
#include "common/cmStringCatHelper.h"
#include "txhost/Character.h"

#include <array>
#include <cstdio>
#include <ctime>
#include <string>

namespace {

/// `text` with the bytes of each character that `isEscaped` chooses written as \xHH.
template <class Predicate>
cmStringT escapedWhere(cmROStringT text, Predicate isEscaped)
{
    cmStringT shown("");
    while (!text.empty()) {
        const Character character = takeCharacter(text);
        if (!isEscaped(character)) {
            shown += character.bytes;
            continue;
        }
        for (const char c : character.bytes) {
            std::array<char, 8> escape{};
            std::snprintf(escape.data(), escape.size(), "\\x%02X", static_cast<unsigned>(static_cast<unsigned char>(c)));
            shown += escape.data();
        }
    }
    return shown;
}

cmStringT forTerminal(cmROStringT text)
{
    return escapedWhere(text, [](const Character& character) { return isControl(character) || isTerminalControl(character); });
}

bool userWantsColours()
{
    static const bool wanted = [] {
        const Environment environment = hostEnvironment();
        return environmentValue(environment, "NO_COLOR").isEmpty() && environmentValue(environment, "TERM") != "dumb";
    }();
    return wanted;
}

bool dateMissing = false;

}  // namespace

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

void console::noteMissingDate()
{
    dateMissing = true;
}

bool console::isDateMissing()
{
    return dateMissing;
}

bool console::isOutputBroken()
{
    return std::ferror(stdout) != 0;
}

bool console::isOutputComplete()
{
    if (!isOutputBroken())
        return true;
    if (!isReaderGone())
        printError("standard output cannot be written");
    return false;
}

void console::printInterrupted(cmROStringT missing)
{
    if (!isReaderGone())
        printError(cmStringT(cmCat("interrupted") + (missing.empty() ? "" : ": ") + missing));
}

void console::printError(cmROStringT line)
{
    printErrorLines(cmStringT(cmCat("txhost: ") + forTerminal(line)));
}

void console::printErrorLines(cmROStringT text)
{
    cmStringT lines("");
    while (!text.empty())
        lines += cmStringT(cmCat(forTerminal(cmWithoutLineEnd(cmTakeUntil(text, '\n')))) + "\n");
    std::fwrite(lines.c_str(), 1, lines.length(), stderr);
    std::fflush(stderr);  // on Windows it is buffered
}

cmStringT console::printable(cmROStringT text)
{
    return isTerminal() ? forTerminal(text) : escapedWhere(text, &isControl);
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
