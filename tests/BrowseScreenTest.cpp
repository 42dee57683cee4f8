#include "txhost/browse/BrowseScreen.h"

#include <gtest/gtest.h>

#include <string>

namespace {

std::string textOf(const Picture& picture)
{
    std::string text = "\n";
    for (const auto& line : picture.lines) {
        std::string whole;
        for (const StyledText& piece : line)
            whole += piece.text.view();
        whole.erase(whole.find_last_not_of(' ') + 1);
        text += whole + "\n";
    }
    return text;
}

/// A hash that begins with the row.
cmStringT hashOf(std::int32_t row)
{
    const std::string digits = std::to_string(1000000 + row);
    return cmROStringT(digits + std::string(40 - digits.size(), 'f'));
}

/// The rows that `wants` of a straight history of `count` commits.
HistoryRows rowsFor(const BrowseWants& wants, std::uint32_t edition, std::int32_t count)
{
    HistoryRows rows{edition, wants.firstRow, {}};
    for (std::int32_t i = wants.firstRow; i < std::min(count, wants.firstRow + wants.rowCount); ++i) {
        HistoryRow row;
        row.hash = i == 0 ? cmStringT("") : hashOf(i);
        row.subject = cmROStringT("Subject " + std::to_string(i));
        row.author = "Ada";
        row.graph = {0, {{0, 0, GraphEdgeKind::begins}}};
        row.isOnCurrentBranch = i % 2 == 1;
        rows.rows.push_back(row);
    }
    return rows;
}

void tell(BrowseScreen& screen, std::uint32_t edition, std::int32_t count)
{
    BrowseNews news;
    news.state.emplace();
    news.state->edition = edition;
    news.state->rowCount = count;
    news.state->isLoading = false;
    news.rows = rowsFor(screen.wants(), edition, count);
    screen.take(std::move(news));
}

TEST(BrowseScreen, ShowsRowsAndDetails)
{
    BrowseScreen screen("repo", Symbols::unicode);
    screen.resize({60, 8});
    tell(screen, 1, 1000);
    for (const char key : {'j', 'j', 'G'})
        screen.press({KeyKind::character, static_cast<char32_t>(key)});
    tell(screen, 1, 1000);
    EXPECT_EQ(textOf(screen.picture()), R"(
▏● 1000993 Subject 993
 ● 1000994 Subject 994
▏● 1000995 Subject 995
 ● 1000996 Subject 996
▏● 1000997 Subject 997
 ● 1000998 Subject 998
▏● 1000999 Subject 999
1,000 commits
)");
    EXPECT_TRUE(screen.isComplete());
}

}  // namespace
