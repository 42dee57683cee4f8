#pragma once

#include <string>
#include <string_view>
#include <vector>

/// The one of `words` that somebody who wrote `word` may have meant: the first that begins with it, or else the first of those
/// with the fewest typing mistakes (a letter too much, too few, wrong, or swapped with its neighbour). Empty when more than half
/// of the letters would be mistakes. Pure.
std::string nearestWord(std::string_view word, const std::vector<std::string>& words);
