#include "editor/Prototype.h"
#include "editor/Editor.h"

#include <gtest/gtest.h>

#include <sstream>
#include <string>
#include <string_view>

namespace {

std::string received;

void note(std::string_view text)
{
    received += text;
    received += '|';
}

void note(std::int32_t number)
{
    note(std::to_string(number));
}

template <class Function>
std::int32_t registerFunction(const char* prototype, Function* function)
{
    return txRegisterFunction(prototype, 0, 0, reinterpret_cast<TXPFN>(function));
}

std::int32_t takeSeven(TXPSZ a, std::int32_t b, TXPSZ c, std::int32_t d, TMStringConst e, TXHREFVAR f, TXPSZ g)
{
    note(a), note(b), note(c), note(d), note(e.getCString()), note(txHvarGetInt(f)), note(g);
    return -7;
}

void changeString(TMStringByRef text)
{
    note(text.getCString());
    text += " changed";
}

TXPSZ nameOf(std::int32_t number)
{
    return number == 0 ? nullptr : "a name";
}

void noteArguments(TXPSZ)
{
    for (std::int32_t number = 1; number <= txArgumentCount(); ++number)
        note(txHvarGetInt(txArgument(number)));
}

Editor* host = nullptr;

void callAnother(TXPSZ)
{
    host->call("inner", {5, 6, 7});
    noteArguments("");
}

class Calls : public testing::Test {
protected:
    Calls()
    {
        received.clear();
        host = &editor;
    }
    Editor editor;
};

}  // namespace

TEST(Prototype, ReadsResultNamesAndParameters)
{
    const auto parsed = parsePrototype("TXPSZ filewatcher:_Get2(TXPSZ,int, TXHREFVAR,  TMStringConst,TMStringByRef)");
    ASSERT_TRUE(parsed);
    EXPECT_EQ(parsed->result, ResultKind::text);
    EXPECT_EQ(parsed->module, "filewatcher");
    EXPECT_EQ(parsed->name, "_Get2");
    using enum ParameterKind;
    EXPECT_EQ(parsed->parameters, (cmArray<ParameterKind>{text, number, variable, stringConst, stringByRef}));
    EXPECT_TRUE(parsePrototype("void m:f()")->parameters.empty());
}

TEST(Prototype, RefusesAnythingElse)
{
    std::istringstream texts("|void|void m:f|void m:f(|m:f()|long m:f()|void f()|void :f()|void m:()|void  m:f()|void m:f() |"
                             "void m:f(void)|void m:f(TXPSZ,)|void m:f(,int)|void m:f( int)|void m:f(int )|void m:f(int*)|"
                             "void m:f(int))|void m:2f()|void m:f(int,int,int,int,int,int,int,int,int)");
    for (std::string text; std::getline(texts, text, '|');)
        EXPECT_FALSE(parsePrototype(text)) << text;
}

TEST_F(Calls, PassesSevenParametersOfEveryKind)
{
    ASSERT_EQ(registerFunction("int m:seven(TXPSZ,int,TXPSZ,int,TMStringConst,TXHREFVAR,TXPSZ)", takeSeven), 0);
    const std::size_t before = editor.openVariables();
    const CallResult result = editor.call("seven", {"text", -1, 12, "34", "constant", 56, ""});
    EXPECT_EQ(received, "text|-1|12|34|constant|56||");
    EXPECT_EQ(result.number, -7);
    EXPECT_EQ(editor.openVariables(), before);
}

TEST_F(Calls, WritesAChangedStringBackIntoItsVariable)
{
    ASSERT_EQ(registerFunction("void m:change(TMStringByRef)", changeString), 0);
    const TXHVAR variable = txHvarAlloc();
    txHvarSetString(variable, "old");
    EXPECT_TRUE(editor.call("change", {CallArgument::variable(variable)}).found);
    cmStringT text;
    txHvarGetString(variable, text);
    EXPECT_EQ(text, "old changed");
    EXPECT_EQ(received, "old|");

    txHvarFree(variable);
    EXPECT_FALSE(editor.call("change", {CallArgument::variable(variable)}).found);
    EXPECT_EQ(received, "old|");
}

TEST_F(Calls, GivesTextResultsWithNullForNone)
{
    ASSERT_EQ(registerFunction("TXPSZ m:name(int)", nameOf), 0);
    EXPECT_EQ(editor.call("name", {1}).text, "a name");
    const CallResult none = editor.call("name", {0});
    EXPECT_TRUE(none.found && none.text.isNull() && !none.number);
}

TEST_F(Calls, ArgumentsPastThePrototypeAreReachableInTheirOwnCallOnly)
{
    ASSERT_EQ(registerFunction("void m:outer(TXPSZ)", callAnother), 0);
    ASSERT_EQ(registerFunction("void m:inner(TXPSZ)", noteArguments), 0);
    editor.call("outer", {1, 2});
    EXPECT_EQ(received, "5|6|7|1|2|");
    EXPECT_EQ(txArgumentCount(), 0);
    EXPECT_EQ(txArgument(1), 0);
}

TEST_F(Calls, RefusesWhatItCannotCall)
{
    EXPECT_LT(registerFunction("void m:f(long)", noteArguments), 0);
    EXPECT_LT(txRegisterFunction("void m:f()", 0, 0, nullptr), 0);
    ASSERT_EQ(registerFunction("void m:f(TXPSZ)", callAnother), 0);
    ASSERT_EQ(registerFunction("void m:f(TXPSZ, int)", noteArguments), 0);
    EXPECT_EQ(editor.prototypes(), cmArray<cmStringT>{"void m:f(TXPSZ, int)"});

    const CallResult tooFew = editor.call("f", {"one"});
    EXPECT_FALSE(tooFew.found);
    EXPECT_EQ(tooFew.error, "void m:f(TXPSZ, int) was given too few arguments: 1");
    EXPECT_FALSE(editor.call("g", {}).found);
    EXPECT_EQ(received, "");
}
