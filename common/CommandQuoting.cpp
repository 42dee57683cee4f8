#include "common/CommandQuoting.h"

#include "common/CommandLine.h"
#include "common/cmStringCatHelper.h"

#include <algorithm>

namespace {

using Token = CommandLineReader::Token;

bool isPlain(char c)
{
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9')
           || cmROStringT("._-+/\\:@=,~^").find(c) != cmROStringT::npos;
}

/// Whether both shells take the word literally without quotes.
bool isShellWord(cmROStringT word)
{
    return !word.empty()
           && std::all_of(word.begin(), word.end(), [](char c) { return isPlain(c) && c != '\\' && c != '~' && c != '^'; });
}

cmStringT quoteForPosixShell(cmROStringT word)
{
    cmStringT quoted("'");
    for (const char c : word)
        quoted += c == '\'' ? cmROStringT("'\\''") : cmROStringT(&c, 1);
    quoted += '\'';
    return quoted;
}

/// `data` in double quotes, with a caret before every character that is special to cmd.exe. The quotes have carets too, so
/// cmd.exe sees no quoted text at all.
cmStringT withCarets(cmROStringT data)
{
    const cmStringT quoted = inDoubleQuotes(data);
    cmStringT escaped("");
    for (const char c : quoted.view()) {
        if (cmROStringT("()!^\"<>&|").find(c) != cmROStringT::npos)
            escaped += '^';
        escaped += c;
    }
    return escaped;
}

/// The text that cmd.exe passes on as exactly this word. Inside plain double quotes nearly everything is literal, but a quote in
/// the word would close them too early, and a per cent sign starts a variable name even there. So each per cent sign is placed
/// between quoted parts: the name it would start then contains a quote, and no variable has such a name.
cmStringT quoteForWindowsShell(cmROStringT word)
{
    if (word.find_first_of("\"%") == cmROStringT::npos)
        return inDoubleQuotes(word);
    cmStringT text("");
    while (!word.empty()) {
        const std::size_t percent = std::min(word.find('%'), word.size());
        if (percent > 0)
            text += withCarets(word.substr(0, percent));
        if (percent < word.size())
            text += "^%";
        word.remove_prefix(std::min(percent + 1, word.size()));
    }
    return text;
}

cmStringT interpreterText(cmROStringT arguments, cmStringT (*quote)(cmROStringT))
{
    cmStringT text("");
    CommandLineReader reader(arguments, true);
    for (;;) {
        switch (reader.next()) {
        case Token::end: return text;
        case Token::blank: text += ' '; break;
        case Token::shellOperator: text += reader.shellOperator(); break;
        case Token::word: {
            const bool literal = !reader.wordWasQuoted() && isShellWord(reader.word());
            text += literal ? reader.word() : quote(reader.word());
            break;
        }
        }
    }
}

/// Whether windowsInterpreterText must refuse the command.
bool isBeyondWindowsShell(cmROStringT program, cmROStringT arguments)
{
    constexpr cmROStringT lineBreaks = "\r\n";
    constexpr cmROStringT specialWhenParsedTwice = "\"!";  // the end of quotes, or a variable
    if (std::count(program.begin(), program.end(), '%') > 1 || program.find_first_of(lineBreaks) != cmROStringT::npos)
        return true;
    bool pipeline = false;
    bool unsafeInPipeline = false;
    CommandLineReader reader(arguments, true);
    for (Token token = reader.next(); token != Token::end; token = reader.next()) {
        if (token == Token::shellOperator)
            pipeline |= reader.shellOperator() == '|';
        if (token != Token::word)
            continue;
        if (reader.word().view().find_first_of(lineBreaks) != cmROStringT::npos)
            return true;
        unsafeInPipeline |= reader.word().view().find_first_of(specialWhenParsedTwice) != cmROStringT::npos;
    }
    return pipeline && unsafeInPipeline;
}

}  // namespace

cmStringT quoteArgument(cmROStringT data)
{
    const bool plain = !data.empty() && std::all_of(data.begin(), data.end(), isPlain) && !hasShellOperator(data);
    return plain ? cmStringT(data) : inDoubleQuotes(data);
}

cmStringT inDoubleQuotes(cmROStringT data)
{
    cmStringT quoted("\"");
    std::size_t backslashes = 0;
    const auto addBackslashes = [&quoted](std::size_t count) {
        for (; count > 0; --count)
            quoted += '\\';
    };
    for (const char c : data) {
        if (c == '"')
            addBackslashes(backslashes + 1);  // doubles those before the quote, and escapes the quote
        backslashes = c == '\\' ? backslashes + 1 : 0;
        quoted += c;
    }
    addBackslashes(backslashes);
    quoted += '"';
    return quoted;
}

cmStringT posixInterpreterText(cmROStringT program, cmROStringT arguments)
{
    const cmStringT first = isShellWord(program) ? cmStringT(program) : quoteForPosixShell(program);
    return cmCat(first) + " " + interpreterText(arguments, &quoteForPosixShell);
}

cmStringT windowsInterpreterText(cmROStringT program, cmROStringT arguments)
{
    if (isBeyondWindowsShell(program, arguments))
        return {};
    // Plain quotes: quotes with carets would not keep a program path with blanks together.
    return cmCat(inDoubleQuotes(program)) + " " + interpreterText(arguments, &quoteForWindowsShell);
}
