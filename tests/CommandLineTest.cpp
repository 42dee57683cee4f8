#include "common/CommandLine.h"

#include <gtest/gtest.h>

#include <random>
#include <string>

namespace {

using Words = cmArray<cmStringT>;

TEST(CommandLine, EndsTheProgramAtItsClosingQuote)
{
    const CommandLine noBlank = splitCommandLine(R"("C:\my tools\git.exe"remote show)");
    EXPECT_EQ(noBlank.program, R"(C:\my tools\git.exe)");
    EXPECT_EQ(noBlank.arguments, "remote show");

    const CommandLine unquoted = splitCommandLine("  git status  --porcelain ");
    EXPECT_EQ(unquoted.program, "git");
    EXPECT_EQ(unquoted.arguments, "status  --porcelain ");

    EXPECT_EQ(splitCommandLine("\"git\"").arguments, "");
    EXPECT_EQ(splitCommandLine("\"never closed status").program, "never closed status");
    EXPECT_EQ(splitCommandLine("").program, "");
}

TEST(CommandLine, SplitsArgumentsByTheRulesForBackslashesAndQuotes)
{
    EXPECT_EQ(splitArguments(R"(a "b c"	d)"), (Words{"a", "b c", "d"}));
    EXPECT_EQ(splitArguments(R"("" x"" "a\"b" "c\\" d\e \\"f g")"), (Words{"", "x", "a\"b", "c\\", "d\\e", "\\f g"}));
    EXPECT_EQ(splitArguments("--pretty=\"a b\" | > ^^"), (Words{"--pretty=a b", "|", ">", "^^"}));
    EXPECT_TRUE(splitArguments("  ").empty());
}

TEST(CommandLine, LeavesPlainDataAloneAndQuotesTheRest)
{
    EXPECT_EQ(quoteArgument("src/main.cpp"), "src/main.cpp");
    EXPECT_EQ(quoteArgument("HEAD~2^"), "HEAD~2^");
    EXPECT_EQ(quoteArgument("HEAD^^"), "\"HEAD^^\"");
    EXPECT_EQ(quoteArgument("a b"), "\"a b\"");
    EXPECT_EQ(quoteArgument(""), "\"\"");
    EXPECT_EQ(quoteArgument("\xC3\xA9"), "\"\xC3\xA9\"");
}

TEST(CommandLine, GivesRandomDataBackUnchanged)
{
    std::mt19937 random(20240607);
    const std::string characters = "ab \t\"\\\\\\'&|<>^%$`()*?;!~\n\x80\xFF/";
    std::uniform_int_distribution<std::size_t> pick(0, characters.size() - 1);
    std::uniform_int_distribution<int> length(0, 12);
    for (int round = 0; round < 10000; ++round) {
        Words words;
        cmStringT line("");
        for (int i = length(random) % 4; i >= 0; --i) {
            cmStringT word("");
            for (int n = length(random); n > 0; --n)
                word += characters[pick(random)];
            line += quoteArgument(word);
            line += ' ';
            words.push_back(word);
        }
        ASSERT_EQ(splitArguments(line), words) << "round " << round << ": " << line.c_str();
    }
}

TEST(CommandLine, KnowsTheShellOperators)
{
    for (const char* text : {"a | b", "a<b", "a>b", "a & b", "HEAD^^", "\"a&b\""})
        EXPECT_TRUE(hasShellOperator(text)) << text;
    for (const char* text : {"HEAD^", "HEAD^ HEAD~^", "a;b $(c) `d` %e% !f", ""})
        EXPECT_FALSE(hasShellOperator(text)) << text;
}

TEST(CommandLine, NeedsAnInterpreterForWhatStandsOutsideQuotesOnly)
{
    for (const char* text : {"a | b", "\"a\">b", "HEAD^^"})
        EXPECT_TRUE(needsInterpreter(text)) << text;
    for (const char* text : {"\"a | b\" c", "\"HEAD^^\"", "HEAD^", ""})
        EXPECT_FALSE(needsInterpreter(text)) << text;
}

TEST(CommandLine, KeepsOnlyOperatorsOutsideQuotesForTheInterpreter)
{
    EXPECT_EQ(posixInterpreterText("/usr/bin/git", "show \"a&b|c $(x).txt\" 2>&1 | sort"),
              "/usr/bin/git show 'a&b|c $(x).txt' 2>&1 | sort");
    EXPECT_EQ(posixInterpreterText("/my git", R"(a^^b c^ $HOME `d` it's "" *)"),
              R"('/my git' 'a^b' 'c^' '$HOME' '`d`' 'it'\''s' '' '*')");
}

TEST(CommandLine, TellsTheWindowsInterpreterWhatIsData)
{
    const auto text = [](cmROStringT arguments) { return windowsInterpreterText(R"(C:\my git.exe)", arguments); };
    EXPECT_EQ(text(R"("a&b ^" plain > out)"), R"("C:\my git.exe" "a&b ^" plain > out)");
    EXPECT_EQ(text(R"("50%PATH%\\" "a^^b")"), R"("C:\my git.exe" ^"50^"^%^"PATH^"^%^"\\^" "a^^b")");
    EXPECT_EQ(text(R"("50%" "dir\\" "")"), R"("C:\my git.exe" ^"50^"^% "dir\\" "")");
    EXPECT_EQ(text(R"("say \"hi & bye\" 5%" "a \\")"), R"("C:\my git.exe" ^"say \^"hi ^& bye\^" 5^"^% "a \\")");
    EXPECT_TRUE(text("\"two\nlines\"").isNull());
    EXPECT_TRUE(text(R"("a \"quote\"" | sort)").isNull());
    EXPECT_TRUE(text("\"!x!\" | sort").isNull());
    EXPECT_FALSE(text(R"("a \"quote\" !x! |" > sort)").isNull());
    EXPECT_EQ(text(R"("2">out)"), R"("C:\my git.exe" "2">out)");
    EXPECT_TRUE(windowsInterpreterText(R"(C:\%PATH%\git.exe)", "a > b").isNull());
}

TEST(CommandLine, FindsProgramsInAbsoluteDirectoriesOfThePathOnly)
{
    const auto everything = [](const cmStringT&) { return true; };
    const auto only = [](const char* path) { return [path](const cmStringT& candidate) { return candidate == path; }; };
    const cmPathStyle posix = cmPathStyle::posix;
    const cmPathStyle windows = cmPathStyle::windows;

    EXPECT_EQ(findProgram("git", ":.:bin:/opt/x:/usr/bin", posix, everything), "/opt/x/git");
    EXPECT_EQ(findProgram("git", "/opt/x:/usr/bin", posix, only("/usr/bin/git")), "/usr/bin/git");
    EXPECT_EQ(findProgram("/opt/my git/git", "", posix, everything), "/opt/my git/git");
    for (const char* name : {"./git", "bin/git", "", "/opt/"})
        EXPECT_TRUE(findProgram(name, "/usr/bin", posix, only("/usr/bin/git")).isNull()) << name;

    EXPECT_EQ(findProgram("git", R"(;.;C:tools;\tools;C:\Git\cmd)", windows, everything), R"(C:\Git\cmd\git.exe)");
    EXPECT_EQ(findProgram("git", R"(C:\a;"C:\my git")", windows, only(R"(C:\my git\git.exe)")), R"(C:\my git\git.exe)");
    EXPECT_EQ(findProgram(R"(C:\Git\git)", "", windows, everything), R"(C:\Git\git.exe)");
    for (const char* name : {R"(.\git)", R"(\git)", "C:git", R"(C:\git.bat)", "git.CMD", R"(C:\git.bat. .)", R"(C:\git.bat\.)",
                             R"(C:\git.)", R"(C:\git.bat::$DATA.exe)"})
        EXPECT_TRUE(findProgram(name, R"(C:\bin)", windows, everything).isNull()) << name;
}

}  // namespace
