#include "txhost/GraphText.h"

#include <gtest/gtest.h>

namespace {

using enum GraphEdgeKind;

/// The picture with a bar behind it.
std::string drawn(const GraphRow& row, std::size_t width = 0)
{
    const cmStringT text = graphText(row, width == 0 ? graphCells(row) : width);
    return std::string(text.view()) + "|";
}

TEST(GraphText, TellsEveryKindOfLineFromEveryOther)
{
    const GraphRow both{3,
                        {{1, 1, passes},
                         {2, 2, passes},
                         {4, 4, passes},
                         {5, 5, passes},
                         {7, 7, passes},
                         {0, 3, ends},
                         {6, 3, ends},
                         {3, 2, begins},
                         {3, 5, begins},
                         {3, 8, begins}}};
    EXPECT_EQ(drawn(both), "╰─│─┼─●─│─┼─┴─│─╮ |");
    EXPECT_EQ(drawn({1, {{0, 0, passes}, {2, 2, passes}, {1, 0, begins}, {1, 2, begins}}}), "├─●─┤ |");
    EXPECT_EQ(drawn({2, {{2, 2, ends}, {2, 0, begins}, {2, 1, begins}, {2, 5, begins}, {3, 3, arrowDown}, {4, 4, arrowUp}}}),
              "╭─┬─●─↓─↑─╮ |");
    EXPECT_EQ(drawn({0, {{0, 0, ends}, {2, 0, ends}, {0, 3, begins}}}), "●───┴─╮ |");
    EXPECT_EQ(drawn({0, {{2, 2, passes}, {1, 1, arrowUp}}}), "○ ↑ │ |");
    EXPECT_EQ(drawn({0, {{0, 0, stub}, {0, 1, begins}}}), "◍─╮ |");
}

TEST(GraphText, GivesWayFarFromTheCommitAndItsParents)
{
    GraphRow row{4, {}};
    for (std::uint16_t column = 0; column < 20; ++column)
        row.edges.push_back({column, column, passes});
    row.edges[4].kind = ends;
    row.edges.push_back({4, 12, begins});
    EXPECT_EQ(drawn(row, 42), "│ │ │ │ ●─│─│─│─│─│─│─│─┤ │ │ │ │ │ │ │   |");
    EXPECT_EQ(drawn(row, 20), "│ │ │ │ ●─│─│─│…┤…  |");
    EXPECT_EQ(drawn(row, 7), "…●…┤…  |");
    EXPECT_EQ(drawn(row, 4), "…●… |");
    EXPECT_EQ(drawn(row, 2), "● |");
}

TEST(GraphText, NamesTheOtherEndsByColumn)
{
    const GraphRow row{1,
                       {{1, 1, stub, 0, "0000000f"},
                        {3, 3, arrowDown, 9, "3333333f"},
                        {0, 0, arrowDown, 8, "1111111f"},
                        {1, 1, arrowUp, 0, ""},
                        {1, 1, arrowUp, 1, "4444444f"},
                        {2, 2, arrowUp, 2, "5555555f"}}};
    EXPECT_EQ(graphNames(row), "↓ 1111111, 3333333  ↑ working copy, 4444444  ↑ 5555555  ◍ 0000000");
    EXPECT_EQ(graphNames({0, {{0, 0, begins}}}), "");
}

TEST(GraphText, MovesTheTextBehindItSeldom)
{
    const auto width = [](GraphWidth& widths, std::uint16_t columns) {
        return widths.next({0, {{static_cast<std::uint16_t>(columns - 1), static_cast<std::uint16_t>(columns - 1), passes}}});
    };
    GraphWidth piped(0);
    EXPECT_EQ(width(piped, 500), 1000u);
    EXPECT_EQ(width(piped, 4), 1000u);
    EXPECT_EQ(width(piped, 5), 1000u);
    for (int row = 3; row < 30; ++row)
        EXPECT_EQ(width(piped, 1), 1000u);
    EXPECT_EQ(width(piped, 1), 16u) << "in steps of four columns";
    EXPECT_EQ(width(piped, 9), 24u) << "at once";
    for (const auto& [terminal, least, most] :
         {std::tuple(80, 6, 30), {40, 2, 15}, {20, 2, 7}, {10, 2, 3}, {9, 2, 2}, {3, 2, 2}}) {
        GraphWidth limited(static_cast<std::size_t>(terminal));
        EXPECT_EQ(width(limited, 1), static_cast<std::size_t>(least)) << terminal;
        EXPECT_EQ(width(limited, 500), static_cast<std::size_t>(most)) << terminal;
    }
}

}  // namespace
