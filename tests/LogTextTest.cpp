#include "txhost/GraphText.h"
#include "txhost/LogLine.h"
#include "txhost/TextWidth.h"

#include <gtest/gtest.h>

namespace {

using enum GraphEdgeKind;

/// The picture with a bar behind it.
std::string drawn(const GraphRow& row, const GraphView& view)
{
    return std::string(graphText(row, view).view()) + "|";
}

std::string drawn(const GraphRow& row)
{
    return drawn(row, {2 * graphColumns(row), 0, 0, graphColumns(row) - 1});
}

/// A commit among lines that pass in `columns` columns, with lines to parents in `parents`.
GraphRow amongLines(std::uint16_t commit, std::uint16_t columns, std::initializer_list<std::uint16_t> parents = {})
{
    GraphRow row{commit, {}};
    for (std::uint16_t column = 0; column < columns; ++column) {
        if (column != commit)
            row.edges.push_back({column, column, passes});
    }
    for (const std::uint16_t parent : parents)
        row.edges.push_back({commit, parent, begins});
    return row;
}

TEST(GraphText, TellsEveryKindOfLineFromEveryOther)
{
    GraphRow both = amongLines(3, 8, {2, 5, 8});
    both.edges[0] = {0, 3, ends};
    both.edges[5] = {6, 3, ends};
    EXPECT_EQ(drawn(both), "╰─│─┼─●─│─┼─┴─│─╮ |");
    EXPECT_EQ(drawn({1, {{0, 0, passes}, {2, 2, passes}, {1, 0, begins}, {1, 2, begins}}}), "├─●─┤ |");
    EXPECT_EQ(drawn({2, {{2, 2, ends}, {2, 0, begins}, {2, 1, begins}, {2, 5, begins}, {3, 3, arrowDown}, {4, 4, arrowUp}}}),
              "╭─┬─●╴↓ ↑╶╮ |");
    EXPECT_EQ(drawn({0, {{0, 0, ends}, {2, 0, ends}, {0, 3, begins}}}), "●───┴─╮ |");
    EXPECT_EQ(drawn({0, {{2, 2, passes}, {1, 1, arrowUp}}}), "○ ↑ │ |");
    EXPECT_EQ(drawn({0, {{0, 0, stub}, {0, 1, begins}}}), "◍─╮ |");
}

TEST(GraphWindow, KeepsColumnsBelowEachOtherAndEveryTurn)
{
    const GraphRow octopus = amongLines(0, 24, {1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15, 16, 17, 18, 19});
    const auto log = [](std::size_t terminal, const cmArray<GraphRow>& rows) {
        GraphWindow window(terminal);
        std::string text = "\n";
        for (const GraphRow& row : rows)
            text += drawn(row, window.next(row)) + "\n";
        return text;
    };
    EXPECT_EQ(
        log(40, {amongLines(0, 12), amongLines(6, 12, {1}), amongLines(7, 12), amongLines(3, 12, {0}), amongLines(1, 12, {10}),
                 amongLines(6, 9, {0, 8}), amongLines(7, 8, {2, 3}), amongLines(11, 12, {0, 2, 1, 7}), octopus}),
        R"(
○ │ │ │ │ │ │… |
│ ├─│─│─│─│─●… |
…│ │ │ │ ○ │…  |
├─│─│─● │ │ │… |
│ ●─│─│─│─│…┤  |
├─│─│─│─│─│─●─│─┤ |
├┼…│─│─│─●     |
├┼┼┼…│─│─│─●   |
●─┼─┼─┼─┼─┼─┼─┼─┼─┼─┼…┼┼┼┼┼┼┼┼┤ |
)");
    EXPECT_EQ(log(80, {octopus, amongLines(0, 24, {1, 2, 20, 12})}), R"(
●─┼─┼─┼─┼─┼─┼─┼─┼─┼─┼─┼─┼─┼─┼─┼─┼─┼─┼─┤… |
●─┼─┼─│─│─│─│─│─│─│─│─│─┼─│…┤ |
)");
    EXPECT_EQ(log(40, {amongLines(20, 24, {0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15, 16, 17, 18})}), R"(
├┼┼┼┼┼┼┼┼┼┼┼┼┼┼┼┼┼┼…●…  |
)");
    for (int terminal = 1; terminal < 80; ++terminal) {
        GraphWindow window(static_cast<std::size_t>(terminal));
        for (const GraphRow& row : {octopus, amongLines(23, 24, {0}), amongLines(8, 24, {1, 2, 0, 5, 9, 10, 11, 12, 13, 14})}) {
            const std::string text = drawn(row, window.next(row));
            EXPECT_TRUE(text.find("●") != std::string::npos && text.ends_with(" |")) << terminal << text;
            EXPECT_LE(static_cast<int>(textWidth(text)), std::max(2, terminal - 7) + 1) << text;
        }
    }
}

TEST(GraphWindow, MovesTheTextBehindItSeldom)
{
    const auto width = [](GraphWindow& window, std::uint16_t columns) { return window.next(amongLines(0, columns)).width; };
    GraphWindow piped(0);
    EXPECT_EQ(width(piped, 500), 1000u);
    EXPECT_EQ(width(piped, 4), 1000u);
    EXPECT_EQ(width(piped, 5), 1000u);
    for (int row = 3; row < 30; ++row)
        EXPECT_EQ(width(piped, 1), 1000u);
    EXPECT_EQ(width(piped, 1), 16u) << "in steps of four columns";
    EXPECT_EQ(width(piped, 9), 24u) << "at once";
    for (const auto& [terminal, least, most] :
         {std::tuple(80, 6, 30), {40, 2, 15}, {20, 2, 7}, {10, 2, 3}, {9, 2, 2}, {3, 2, 2}}) {
        GraphWindow limited(static_cast<std::size_t>(terminal));
        EXPECT_EQ(width(limited, 1), static_cast<std::size_t>(least)) << terminal;
        EXPECT_EQ(width(limited, 500), static_cast<std::size_t>(most)) << terminal;
    }
    GraphWindow scrolled(40);
    EXPECT_EQ(scrolled.next(amongLines(11, 12)).first, 6u);
    for (int row = 1; row < 30; ++row)
        EXPECT_EQ(scrolled.next(amongLines(5, 6)).first, 3u);
    EXPECT_EQ(scrolled.next(amongLines(5, 6)).first, 0u);
}

TEST(GraphNames, BelongToTheCommitOfTheRow)
{
    GraphNames names;
    EXPECT_EQ(names.next({1, {{1, 3, begins, 9, "3333333f"}, {1, 0, begins, 8, "1111111f"}, {1, 1, stub, 0, "0000000f"}}}),
              "↓ 3333333, 1111111  ◍ 0000000");
    EXPECT_EQ(names.next({1,
                          {{1, 1, begins},
                           {0, 0, arrowDown, 8, "1111111f"},
                           {3, 3, arrowDown, 9, "3333333f"},
                           {5, 5, arrowDown, 7, "5555555f"},
                           {1, 1, arrowUp, 0, ""},
                           {2, 2, arrowUp, 1, "4444444f"},
                           {2, 2, arrowUp, 2, "2222222f"}}}),
              "↑ working copy  (↓ 5555555)");
    EXPECT_EQ(names.next({2, {{3, 3, arrowDown, 6, "6666666f"}}}), "↑ 4444444, 2222222  (↓ 6666666)");
    EXPECT_EQ(names.next({0, {{0, 0, begins}}}), "");
}

TEST(TextWidth, CutsBetweenWhatAReaderSeesAsCharacters)
{
    const struct {
        const char* text;
        std::size_t width;
        const char* shortened;  ///< to one column less
    } cases[] = {
        {"abc", 3, "a…"},
        {"a\u4E2D\uFF21", 5, "a\u4E2D…"},  // wide letters
        {"e\u0301\u0302x", 2, "…"},        // accents
        {"ae\u0301x", 3, "a…"},
        {"a\u2764\uFE0F\U0001F44D\U0001F3FD", 7, "a\u2764\uFE0F…"},                // asked to be an emoji; with a colour of skin
        {"a\U0001F468\u200D\U0001F469", 5, "a…"},                                  // joined
        {"\U0001F1E9\U0001F1EA\U0001F1EB\U0001F1F7", 4, "\U0001F1E9\U0001F1EA…"},  // two flags
        {"\u00A1\u25CF\xFF\xCC", 4, "\u00A1\u25CF…"},                              // ambiguous; no UTF-8
    };
    for (const auto& [text, width, cut] : cases) {
        EXPECT_EQ(textWidth(text), width) << text;
        EXPECT_EQ(shortened(text, width), text);
        EXPECT_EQ(shortened(text, width - 1), cut) << text;
        EXPECT_EQ(shortened(text, 0), "");
    }
}

TEST(LogLine, CutsNothingInHalf)
{
    const GraphRow row{0, {{0, 1, begins, 9, "aaaaaaaf"}}};
    const LogEntry entry{
        "1234567", {{"main"}, {"topic", "<>"}, {"e\u0301\u0301x"}}, "A subject of 26 characters", "Ada, 2020-01-01"};
    const auto lineOf = [&](const LogEntry& of, std::size_t width) { return LogLines(width, &inNoColour).next(row, of); };
    const auto line = [&](std::size_t width) { return lineOf(entry, width); };
    const std::string labels = "[main] <topic> [e\u0301\u0301x] ";
    EXPECT_EQ(line(0), "●─╮     1234567 " + labels + "A subject of 26 characters  Ada, 2020-01-01  ↓ aaaaaaa");
    EXPECT_EQ(line(79), "●─╮   1234567 " + labels + "A subject of 26 characters  ↓ aaaaaaa");
    EXPECT_EQ(line(66), "●─╮   1234567 " + labels + "A subject of 26 char…  ↓ aaaaaaa");
    EXPECT_EQ(line(64), "●─╮   1234567 " + labels + "A subject of 26 characters");
    EXPECT_EQ(line(40), "●─╮ 1234567 [main] […] A subject of 26 …");
    EXPECT_EQ(line(30), "●─╮ 1234567 [m…] […] A subjec…");
    EXPECT_EQ(line(20), "●─╮ 1234567 […] A s…");
    EXPECT_EQ(LogLines(50, &inNoColour, Symbols::plain).next(row, entry).view(),
              "*-. 1234567 [main] <topic> [~] A subject of 26 ch~");
    EXPECT_EQ(line(12), "●─╮ 1234567");
    EXPECT_EQ(line(9), "● 1234567");
    EXPECT_EQ(line(8), "● ");
    const LogEntry little{"1234567", {{"a-long-branch-name"}}, "Short", ""};
    EXPECT_EQ(lineOf(little, 52), "●─╮ 1234567 [a-long-branch-name] Short  ↓ aaaaaaa");
    EXPECT_EQ(lineOf(little, 40), "●─╮ 1234567 [a-long-branch-name] Short");
    EXPECT_EQ(lineOf(little, 21), "●─╮ 1234567 […] Short");
    for (std::size_t width = 2; width < 120; ++width)
        EXPECT_LE(textWidth(line(width)), width);
}

}  // namespace
