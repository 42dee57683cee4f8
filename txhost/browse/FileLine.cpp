#include "txhost/browse/FileLine.h"

#include "common/cmStringCatHelper.h"
#include "txhost/Console.h"

#include <string>

namespace {

constexpr std::size_t countWidth = 6;

int colourOf(char kind)
{
    switch (kind) {
    case 'A': return console::green;
    case 'D': return console::red;
    case 'M': return console::yellow;
    case 'R': return console::cyan;
    default: return 0;
    }
}

/// As `git status --short` shows it: what the index has changed, and then what the file itself has.
void drawKind(StyledLine& line, const FileChange& file)
{
    const cmROStringT kind(file.kind == '?' ? " " : &file.kind, 1);
    if (!file.isStaged && !file.isUnstaged) {
        line.add(" ");
        line.add(kind, {colourOf(file.kind), true});
        return;
    }
    line.add(file.isStaged ? kind : " ", {console::green, true});
    line.add(file.isUnstaged ? kind : " ", {console::red, true});
}

void drawCount(StyledLine& line, cmROStringT sign, std::int32_t count, int colour)
{
    const std::string text = count > 0 ? std::string(sign) + std::to_string(count) : std::string();
    line.add(std::string(countWidth - std::min(countWidth, text.size()), ' '));
    line.add(text, {colour});
}

}  // namespace

void drawFileChange(StyledLine& line, const FileChange& file)
{
    drawKind(line, file);
    if (file.isBinary) {
        line.add("      binary", {console::grey});
    } else {
        drawCount(line, "+", file.added, console::green);
        drawCount(line, "-", file.removed, console::red);
    }
    line.add("  ");
    if (!file.oldPath.isEmpty())
        line.add(cmStringT(cmCat(file.oldPath) + " -> "), {console::grey});
    line.add(file.path);
}

cmStringT changeSummary(const cmArray<FileChange>& files)
{
    std::int64_t added = 0;
    std::int64_t removed = 0;
    for (const FileChange& file : files) {
        added += file.added;
        removed += file.removed;
    }
    const cmStringT text =
        cmCat(groupedDigits(static_cast<std::int64_t>(files.size()))) + (files.size() == 1 ? " file" : " files");
    return added + removed == 0 ? text : cmStringT(cmCat(text) + ", +" + groupedDigits(added) + " -" + groupedDigits(removed));
}

cmStringT countedText(std::int64_t number, cmROStringT thing)
{
    return cmCat(groupedDigits(number)) + " " + thing + (number == 1 ? "" : "s");
}

cmStringT groupedDigits(std::int64_t number)
{
    std::string digits = std::to_string(number);
    for (std::size_t i = digits.size(); i > 3; i -= 3)
        digits.insert(i - 3, ",");
    return cmROStringT(digits);
}
