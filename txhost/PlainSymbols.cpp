#include "txhost/PlainSymbols.h"

#include "txhost/Character.h"

#include <algorithm>
#include <utility>

namespace {

constexpr std::pair<cmROStringT, cmROStringT> plainSymbols[] = {
    {"●", "*"}, {"○", "o"}, {"◍", "@"}, {"│", "|"}, {"─", "-"}, {"╴", "-"}, {"╶", "-"}, {"╵", "'"},
    {"╯", "'"}, {"╰", "'"}, {"┴", "'"}, {"╷", "."}, {"╮", "."}, {"╭", "."}, {"┬", "."}, {"├", "+"},
    {"┤", "+"}, {"┼", "+"}, {"↓", "v"}, {"↑", "^"}, {"…", "~"}, {"▏", ":"}, {"·", "-"}};

}  // namespace

cmStringT withPlainSymbols(cmROStringT text)
{
    cmStringT plain("");
    while (!text.empty()) {
        const cmROStringT bytes = takeCharacter(text).bytes;
        const auto* const found = std::find_if(std::begin(plainSymbols), std::end(plainSymbols),
                                               [&](const auto& symbol) { return symbol.first == bytes; });
        plain += found == std::end(plainSymbols) ? bytes : found->second;
    }
    return plain;
}
