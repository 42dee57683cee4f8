#include "editor/Prototype.h"
#include "common/cmStringCatHelper.h"
#include "editor/Editor.h"

#include <gtest/gtest.h>

#include <sstream>
#include <string>

namespace {

std::ostringstream received;

template <class Function>
std::int32_t registerFunction(const char* prototype, Function* function)
{
    return txRegisterFunction(prototype, 0, 0, reinterpret_cast<TXPFN>(function));
}

std::int32_t takeSeven(TXPSZ a, std::int32_t b, TXPSZ c, std::int32_t d, TMStringConst e, TXHREFVAR f, TMStringByRef g)
{
    received << a << '|' << b << '|' << c << '|' << d << '|' << e.getCString() << '|' << txHvarGetInt(f) << '|' << g.getCString();
    g += " changed";
    return -7;
}

TXPSZ nameOf(std::int32_t number)
{
    return number == 0 ? nullptr : "a name";
}

void noteArguments(TXPSZ)
{
    for (std::int32_t number = 1; number <= txArgumentCount(); ++number)
        received << txHvarGetInt(txArgument(number)) << '|';
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
        received.str("");
        host = &editor;
    }
    Editor editor;
};

}  // namespace

TEST(Prototype, IsParsedToTheLetter)
{
    const auto parsed = parsePrototype("TXPSZ filewatcher:_Get2(TXPSZ,int, TXHREFVAR,  TMStringConst,TMStringByRef)");
    ASSERT_TRUE(parsed && parsed->result == ResultKind::text);
    EXPECT_EQ(cmStringT(cmCat(parsed->module) + ":" + parsed->name), "filewatcher:_Get2");
    using enum ParameterKind;
    EXPECT_EQ(parsed->parameters, (cmArray<ParameterKind>{text, number, variable, stringConst, stringByRef}));
    EXPECT_TRUE(parsePrototype("void m:f()")->parameters.empty());

    std::istringstream texts("|void|void m:f|void m:f(|m:f()|long m:f()|void f()|void :f()|void m:()|void  m:f()|void m:f() |"
                             "void m:f(void)|void m:f(TXPSZ,)|void m:f(,int)|void m:f( int)|void m:f(int )|void m:f(int*)|"
                             "void m:f(int))|void m:2f()|void m:f(int,int,int,int,int,int,int,int,int)");
    for (std::string wrong; std::getline(texts, wrong, '|');)
        EXPECT_FALSE(parsePrototype(wrong)) << wrong;
}

TEST_F(Calls, PassParametersAndResultsOfEveryKind)
{
    ASSERT_EQ(registerFunction("int m:seven(TXPSZ,int,TXPSZ,int,TMStringConst,TXHREFVAR,TMStringByRef)", takeSeven), 0);
    const TXHVAR text = txHvarAlloc();
    txHvarSetString(text, "old");
    const std::size_t before = editor.openVariables();
    const cmArray<CallArgument> arguments{"text", -1, 12, "34", "constant", 56, CallArgument::variable(text)};
    EXPECT_EQ(editor.call("seven", arguments).number, -7);
    EXPECT_EQ(received.str(), "text|-1|12|34|constant|56|old");
    cmStringT changed;
    txHvarGetString(text, changed);
    EXPECT_EQ(changed, "old changed");
    EXPECT_EQ(editor.openVariables(), before);
    txHvarFree(text);
    EXPECT_FALSE(editor.call("seven", arguments).found);

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
    EXPECT_EQ(received.str(), "5|6|7|1|2|");
    EXPECT_EQ(txArgumentCount(), 0);
    EXPECT_EQ(txArgument(1), 0);
}

TEST_F(Calls, AreRefusedWhenTheyDoNotSuitTheFunction)
{
    EXPECT_LT(registerFunction("void m:f(long)", noteArguments), 0);
    EXPECT_LT(txRegisterFunction("void m:f()", 0, 0, nullptr), 0);
    ASSERT_EQ(registerFunction("void m:f(TXPSZ)", callAnother), 0);
    ASSERT_EQ(registerFunction("void m:f(TXPSZ, int)", noteArguments), 0);
    EXPECT_EQ(editor.prototypes(), cmArray<cmStringT>{"void m:f(TXPSZ, int)"});
    EXPECT_EQ(editor.call("f", {"one"}).error, "void m:f(TXPSZ, int) was given too few arguments: 1");
    EXPECT_EQ(received.str(), "");
}
