#include "txhost/Console.h"

#include "common/Environment.h"
#include "common/cmMutex.h"
#include "common/cmStringCatHelper.h"
#include "txhost/EscapedText.h"
#include "txhost/TextWidth.h"

#include <cstdio>
#include <string>

namespace {

bool userWantsColours()
{
    static const bool wanted = [] {
        const Environment environment = hostEnvironment();
        return environmentValue(environment, "NO_COLOR").isEmpty() && environmentValue(environment, "TERM") != "dumb";
    }();
    return wanted;
}

console::ColourChoice colourChoice = console::ColourChoice::automatic;

/// Whether what is written to standard output is for a terminal, even if through a pager.
bool isForTerminal()
{
    return console::isTerminal() || colourChoice == console::ColourChoice::always;
}

bool dateMissing = false;

cmMutex progressLock;
bool isProgressShown CM_GUARDED_BY(progressLock) = false;

/// What is written next stands in a line of its own.
void removeProgress() CM_REQUIRES(progressLock)
{
    if (isProgressShown)
        std::fputs("\r\033[K", stderr);
    isProgressShown = false;
}

}  // namespace

bool console::showsProgress()
{
    return isTerminal() && isErrorTerminal();
}

void console::showProgress(cmROStringT text)
{
    if (!showsProgress())
        return;
    const std::size_t columns = terminalWidth(true);  // not every terminal tells
    const cmStringT shown = shortened(escapedForTerminal(text), (columns == 0 ? 80 : columns) - 1, "~");
    const cmMutexLock hold(progressLock);
    removeProgress();
    isProgressShown = !shown.isEmpty();
    std::fputs(shown.c_str(), stderr);
    std::fflush(stderr);
}

void console::printLine(cmROStringT line)
{
    const cmMutexLock hold(progressLock);
    removeProgress();
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
    printErrorLines(cmStringT(cmCat("txhost: ") + escapedForTerminal(line)));
}

void console::printErrorLines(cmROStringT text)
{
    cmStringT lines("");
    while (!text.empty())
        lines += cmStringT(cmCat(escapedForTerminal(cmWithoutLineEnd(cmTakeUntil(text, '\n')))) + "\n");
    const cmMutexLock hold(progressLock);
    removeProgress();
    std::fwrite(lines.c_str(), 1, lines.length(), stderr);
    std::fflush(stderr);  // on Windows it is buffered
}

void console::chooseColours(ColourChoice choice)
{
    colourChoice = choice;
}

cmStringT console::printable(cmROStringT text)
{
    return isForTerminal() ? escapedForTerminal(text) : escapedControls(text);
}

bool console::isColoured()
{
    return colourChoice == ColourChoice::automatic ? isTerminal() && userWantsColours() : colourChoice == ColourChoice::always;
}

cmStringT console::coloured(int colour, cmROStringT text)
{
    if (!isColoured() || text.empty())
        return text;
    const std::string number = std::to_string(colour);
    return cmCat("\033[") + number + "m" + text + "\033[0m";
}

std::size_t console::width()
{
    const std::size_t own = terminalWidth(false);
    return own == 0 && isForTerminal() ? terminalWidth(true) : own;
}
