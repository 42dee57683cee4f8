#include "common/CommandLine.h"
#include "common/ProgramSearch.h"

#include <gtest/gtest.h>

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

TEST(CommandLine, FindsShellOperatorsAnywhereButNeedsAnInterpreterOutsideQuotesOnly)
{
    for (const char* text : {"a | b", "a<b", "\"a\">b", "a & b", "HEAD^^"}) {
        EXPECT_TRUE(hasShellOperator(text)) << text;
        EXPECT_TRUE(needsInterpreter(text)) << text;
    }
    for (const char* text : {"\"a | b\" c", "\"HEAD^^\""}) {
        EXPECT_TRUE(hasShellOperator(text)) << text;
        EXPECT_FALSE(needsInterpreter(text)) << text;
    }
    for (const char* text : {"HEAD^ HEAD~^", "a;b $(c) `d` %e% !f", ""})
        EXPECT_FALSE(hasShellOperator(text)) << text;
}

TEST(ProgramSearch, LooksInAbsoluteDirectoriesOfThePathOnly)
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
