#include "txhost/browse/StatusLine.h"

#include "common/cmStringCatHelper.h"
#include "txhost/Console.h"
#include "txhost/TextWidth.h"
#include "txhost/browse/FileLine.h"

#include <algorithm>
#include <utility>

namespace {

constexpr std::size_t leastWidthForName = 100;  ///< of the repository

void drawHistory(StyledLine& line, const HistoryState& state, const StatusFacts& facts)
{
    if (facts.filter.isEmpty()) {
        line.add(countedText(facts.commitCount, "commit"));
    } else {
        line.add("filter: ", {console::cyan});
        line.add(facts.filter, {0, true});
        line.draw(cmStringT(cmCat(" · ") + facts.filterRemark));
    }
    if (!state.isLoading && !facts.isReloading)
        return;
    if (state.rowsPerSecond > 0)
        line.draw(cmStringT(cmCat(" · ") + groupedDigits(state.rowsPerSecond) + "/s"));
    line.draw(" · loading …");
}

}  // namespace

void drawStatus(StyledLine& line, const HistoryState& state, const StatusFacts& facts)
{
    const cmStringT position = facts.rowCount == 0
                                   ? cmStringT("")
                                   : cmStringT(cmCat(groupedDigits(facts.row + 1)) + "/" + groupedDigits(facts.rowCount));
    const std::size_t reserved = textWidth(position) + 1;
    StyledLine left = line.part(line.room() - std::min(line.room(), reserved));
    if (line.room() >= leastWidthForName)
        left.add(cmStringT(cmCat(facts.repository) + "  "), {0, true});
    if (!facts.message.isEmpty())
        left.add(cmStringT(cmCat(facts.message) + "  "), {facts.isBadNews ? console::red : 0, true});
    if (facts.isSearching)
        left.draw("searching …  ", {0, true});
    if (!state.failure.isNull())
        left.add(cmStringT(cmCat(state.failure) + "  "), {console::red});
    if (state.haveBranchesMoved)
        left.add("branches moved: R loads anew  ", {console::yellow});
    if (facts.title.isEmpty())
        drawHistory(left, state, facts);
    else
        left.add(facts.title, {console::cyan});
    line.add(std::move(left));
    line.padTo(textWidth(position));
    line.add(position, {console::grey});
}
