#include "txhost/LogLine.h"
#include "txhost/TextWidth.h"

#include <gtest/gtest.h>

namespace {

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
    const GraphRow row{0, {{0, 0, GraphEdgeKind::begins}, {1, 1, GraphEdgeKind::arrowDown, 9, "aaaaaaaf"}}};
    const LogEntry entry{
        "1234567", {{"main"}, {"topic", "<>"}, {"e\u0301\u0301x"}}, "A subject of 26 characters", "Ada, 2020-01-01"};
    const auto lineOf = [&](const LogEntry& of, std::size_t width) { return LogLines(width, &inNoColour).next(row, of); };
    const auto line = [&](std::size_t width) { return lineOf(entry, width); };
    const std::string labels = "[main] <topic> [e\u0301\u0301x] ";
    EXPECT_EQ(line(0), "● ↓     1234567 " + labels + "A subject of 26 characters  Ada, 2020-01-01  ↓ aaaaaaa");
    EXPECT_EQ(line(79), "● ↓   1234567 " + labels + "A subject of 26 characters  ↓ aaaaaaa");
    EXPECT_EQ(line(66), "● ↓   1234567 " + labels + "A subject of 26 char…  ↓ aaaaaaa");
    EXPECT_EQ(line(64), "● ↓   1234567 " + labels + "A subject of 26 characters");
    EXPECT_EQ(line(40), "● ↓ 1234567 [main] […] A subject of 26 …");
    EXPECT_EQ(line(30), "● ↓ 1234567 [m…] […] A subjec…");
    EXPECT_EQ(line(20), "● ↓ 1234567 […] A s…");
    EXPECT_EQ(line(12), "● ↓ 1234567");
    EXPECT_EQ(line(9), "● 1234567");
    EXPECT_EQ(line(8), "● ");
    const LogEntry little{"1234567", {{"a-long-branch-name"}}, "Short", ""};
    EXPECT_EQ(lineOf(little, 52), "● ↓ 1234567 [a-long-branch-name] Short  ↓ aaaaaaa");
    EXPECT_EQ(lineOf(little, 40), "● ↓ 1234567 [a-long-branch-name] Short");
    EXPECT_EQ(lineOf(little, 21), "● ↓ 1234567 […] Short");
    for (std::size_t width = 2; width < 120; ++width)
        EXPECT_LE(textWidth(line(width)), width);
}

}  // namespace
