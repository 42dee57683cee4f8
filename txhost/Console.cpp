#include "txhost/Console.h"

#include "common/cmStringCatHelper.h"

#include <array>
#include <cstdio>
#include <ctime>
#include <string>

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
    printError("standard output cannot be written");
    return false;
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
    if (!isTerminal())
        return text;
    const std::string number = std::to_string(colour);
    return cmCat("\033[") + number + "m" + text + "\033[0m";
}

cmStringT console::timeOfDay()
{
    const std::time_t now = std::time(nullptr);
    std::array<char, 16> text{};
    std::strftime(text.data(), text.size(), "%H:%M:%S", std::localtime(&now));  // one thread asks
    return text.data();
}
