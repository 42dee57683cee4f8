#include "common/CommandLine.h"
#include "common/CommandQuoting.h"
#include "tests/Captured.h"

#include <gtest/gtest.h>

#include <cctype>
#include <random>

namespace {

/// Makes lists of arguments that a parser could take for something other than data. The same lists in every run.
class RandomLists {
public:
    explicit RandomLists(const std::string& canary)
        : m_fragments{canary, "%PATH%", "%",   "\\\\", "\\\"", "\"\"", "$(id)",    "`id`",         "^^",
                      "&&",   "||",     ">&2", "2>x",  "'",    "(",    "\xC3\xBC", "\xE6\xBC\xA2", "\xF0\x9F\x99\x82",
                      "!x!",  "\t"}
    {
    }

    Texts next()
    {
        Texts words(below(6));
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
    const Texts m_fragments;
};

TEST(Quoting, RefusesWhatTheWindowsInterpreterCannotBeGiven)
{
    const auto text = [](cmROStringT arguments) { return windowsInterpreterText(R"(C:\my git.exe)", arguments); };
    EXPECT_EQ(text(R"("a&b ^" plain > out)"), R"("C:\my git.exe" "a&b ^" plain > out)");
    EXPECT_EQ(text(R"("2">out)"), R"("C:\my git.exe" "2">out)");
    EXPECT_TRUE(text("\"two\nlines\"").isNull());
    EXPECT_TRUE(text(R"("a \"quote\"" | sort)").isNull());
    EXPECT_TRUE(text("\"!x!\" | sort").isNull());
    EXPECT_FALSE(text(R"("a \"quote\" !x! |" > sort)").isNull());
    EXPECT_TRUE(windowsInterpreterText(R"(C:\%PATH%\git.exe)", "a > b").isNull());
}

/// What cmd.exe passes on, by its rules in simple form. Fails the test when it would obey a part of the text.
std::string passedByCmd(const std::string& text)
{
    for (std::size_t at = text.find('%'); at < text.size(); at = text.find('%', at + 1))
        EXPECT_FALSE(std::isalnum(static_cast<unsigned char>(text[at + 1]))) << "starts a variable's name: " << text;
    std::string passed;
    bool quoted = false;
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (!quoted && text[i] == '^')
            ++i;
        else if (text[i] == '"')
            quoted = !quoted;
        else
            EXPECT_TRUE(quoted || std::string("&|<>()").find(text[i]) == std::string::npos) << text;
        passed += text[i];
    }
    return passed;
}

TEST(Quoting, TheWindowsInterpreterPassesEveryListOn)
{
    RandomLists random("&calc&");
    for (int i = 0; i < 10000; ++i) {
        const Texts words = random.next();
        std::string line;
        for (const std::string& word : words)
            line += " " + std::string(quoteArgument(word));
        std::string text(windowsInterpreterText("git.exe", line));
        const cmArray<cmStringT> received = splitArguments(splitCommandLine(passedByCmd(text)).arguments);
        ASSERT_EQ(Texts(received.begin(), received.end()), words) << "list " << i << ": " << text;
    }
}

class QuotingTest : public testing::Test {
protected:
    /// Sends 10,000 lists to the helper program, several of them in each start.
    void sendLists(SpawnOptions options, cmROStringT last)
    {
        constexpr int lists = 10000;
        constexpr std::size_t longestLine = 3000;  // cmd.exe takes 8191 characters, and escaping can double them
        const int listsSentAlone = affordableStarts(500);
        RandomLists random("&\"" + builtProgram("testhelper") + "\" mark \"" + marker + "\"&");
        std::string line = "args";
        std::string expected;
        for (int i = 0; i < lists; ++i) {
            Texts words = random.next();
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
        EXPECT_FALSE(fs::exists(folder / "marker"));
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
    sendLists(spawnScannedCommand, " 2>&1");  // an operator for the interpreter
}

TEST_F(QuotingTest, OperatorsOutsideQuotesKeepTheirMeaning)
{
    const cmStringT piped = cmCat(helper("args plain \"a|b c\" | ")) + helper("echo-input");
    EXPECT_EQ(run(piped).output, "5:plain\n5:a|b c\n");
    EXPECT_EQ(run(helper("args HEAD^ a|b ^^"), {}, spawnPlainCommand).output, "5:HEAD^\n3:a|b\n2:^^\n");
    EXPECT_EQ(run(helper("args a^^b")).output, "3:a^b\n");
    EXPECT_EQ(run(helper("args x \"2\">\"" + marker + "\"")).output, "");
    EXPECT_EQ(readFile(folder / "marker"), "1:x\n1:2\n");
}

}  // namespace
