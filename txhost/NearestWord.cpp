#include "txhost/NearestWord.h"

#include <algorithm>
#include <cstddef>

namespace {

/// How many typing mistakes make `written` out of `meant`.
std::size_t mistakesBetween(std::string_view written, std::string_view meant)
{
    // counts[i][j]: between the first i letters of `written` and the first j letters of `meant`.
    std::vector<std::vector<std::size_t>> counts(written.size() + 1, std::vector<std::size_t>(meant.size() + 1));
    for (std::size_t i = 0; i <= written.size(); ++i) {
        for (std::size_t j = 0; j <= meant.size(); ++j) {
            if (i == 0 || j == 0) {
                counts[i][j] = i + j;
                continue;
            }
            const std::size_t wrong = written[i - 1] == meant[j - 1] ? 0 : 1;
            counts[i][j] = std::min({counts[i - 1][j] + 1, counts[i][j - 1] + 1, counts[i - 1][j - 1] + wrong});
            if (i > 1 && j > 1 && written[i - 1] == meant[j - 2] && written[i - 2] == meant[j - 1])
                counts[i][j] = std::min(counts[i][j], counts[i - 2][j - 2] + 1);
        }
    }
    return counts.back().back();
}

}  // namespace

std::string nearestWord(std::string_view word, const std::vector<std::string>& words)
{
    std::string nearest;
    std::size_t fewest = word.size() / 2 + 1;
    for (const std::string& meant : words) {
        const std::size_t mistakes = meant.starts_with(word) ? 0 : mistakesBetween(word, meant);
        if (mistakes < fewest) {
            fewest = mistakes;
            nearest = meant;
        }
    }
    return nearest;
}
