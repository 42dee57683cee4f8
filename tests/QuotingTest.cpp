#include "common/CommandLine.h"
#include "tests/Captured.h"
#include "tests/TestSupport.h"

#include <gtest/gtest.h>

#include <random>
#include <string>
#include <vector>

namespace {

using Words = std::vector<std::string>;

/// Makes lists of arguments that try to be anything but data. The same ones in every run.
class RandomLists {
public:
    explicit RandomLists(const std::string& canary)
        : m_fragments{canary,
                      "%PATH%",
                      "%",
                      "\\\\",
                      "\\\"",
                      "\"\"",
                      "$(id)",
                      "`id`",
                      "^^",
                      "&&",
                      "||",
                      ">&2",
                      "2>x",
                      "'",
                      "\xC3\xBC",
                      "\xE6\xBC\xA2",
                      "\xF0\x9F\x99\x82",
                      "!x!",
                      ";",
                      "\t"}
    {
    }

    Words next()
    {
        Words words(below(6));
        for (std::string& word : words) {
            for (std::size_t pieces = below(8); pieces > 0; --pieces)
                word +=
                    below(3) == 0 ? m_fragments[below(m_fragments.size())] : std::string(1, static_cast<char>(' ' + below(95)));
        }
        return words;
    }

private:
    std::size_t below(std::size_t bound) { return m_random() % bound; }

    std::mt19937 m_random{20261121};
    const Words m_fragments;
};

class QuotingTest : public testing::Test {
protected:
    /// Hands 10,000 lists to the helper program, a number of them in each start.
    void sendLists(SpawnOptions options, cmROStringT last)
    {
        constexpr int lists = 10000;
        constexpr std::size_t longestLine = 3000;  // the interpreter's own limit is 8191, everything escaped
        const int listsSentAlone = affordableStarts(500);
        RandomLists random("&\"" + builtProgram("testhelper") + "\" mark \"" + marker + "\"&");
        std::string line = "args";
        std::string expected;
        for (int i = 0; i < lists; ++i) {
            Words words = random.next();
            words.emplace_back("<end>");
            for (const std::string& word : words) {
                line += " " + std::string(quoteArgument(word));
                expected += std::to_string(word.size()) + ":" + word + "\n";
            }
            if (i >= listsSentAlone && line.size() < longestLine && i + 1 < lists)
                continue;
            line += last;
            const Captured sent = run(helper(line), {}, options);
            ASSERT_EQ(sent.output, expected) << "list " << i << ": " << line << "\n" << sent.result.errorOutput.c_str();
            line = "args";
            expected.clear();
        }
        EXPECT_FALSE(std::filesystem::exists(folder / "marker"));
    }

    const TempFolder folder;
    const std::string marker = text(folder / "marker");
};

TEST_F(QuotingTest, EveryListArrives)
{
    sendLists(spawnPlainCommand, "");
}

TEST_F(QuotingTest, EveryListArrivesThroughTheInterpreter)
{
    sendLists(spawnScannedCommand, " 2>&1");  // an operator that the interpreter does obey
}

TEST_F(QuotingTest, OperatorsOutsideQuotesKeepTheirMeaning)
{
    const std::string upper = "\"" + builtProgram("testhelper") + "\" upper";
    EXPECT_EQ(run(helper("args plain \"a|b c\" | " + upper)).output, "5:PLAIN\n5:A|B C\n");
    EXPECT_EQ(run(helper("args HEAD^ a|b ^^"), {}, spawnPlainCommand).output, "5:HEAD^\n3:a|b\n2:^^\n");
    EXPECT_EQ(run(helper("args a^^b")).output, "3:a^b\n");
    EXPECT_EQ(run(helper("args x \"2\">\"" + marker + "\"")).output, "");
    EXPECT_EQ(readFile(folder / "marker"), "1:x\n1:2\n");
}

}  // namespace
