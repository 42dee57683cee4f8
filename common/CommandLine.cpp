#include "common/CommandLine.h"

#include "common/cmStringCatHelper.h"

#include <algorithm>
#include <cstdint>

namespace {

bool isBlank(char c)
{
    return c == ' ' || c == '\t';
}

bool isPlain(char c)
{
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9')
           || cmROStringT("._-+/\\:@=,~^").find(c) != cmROStringT::npos;
}

bool isOperator(char c)
{
    return c == '|' || c == '<' || c == '>' || c == '&';
}

/// What one step of reading a command line found.
enum class Piece : std::uint8_t { end, blank, text, shellOperator };

/// Reads a command line piece by piece. With `interpreter`, operators outside quotes are pieces of their own
/// and a pair of carets outside quotes is one caret.
class CommandLineReader {
public:
    CommandLineReader(cmROStringT text, bool interpreter) : m_text(text), m_interpreter(interpreter) {}

    Piece next()
    {
        if (m_position == m_text.size())
            return Piece::end;
        const char c = m_text[m_position];
        if (isBlank(c)) {
            ++m_position;
            return Piece::blank;
        }
        if (m_interpreter && isOperator(c)) {
            m_operator = c;
            ++m_position;
            return Piece::shellOperator;
        }
        readWord();
        return Piece::text;
    }

    char shellOperator() const { return m_operator; }
    /// The last text, without its quotes; `""` gives an empty one.
    const cmStringT& word() const { return m_word; }
    /// Whether it had quotes: then it is data, and no digit before a redirection.
    bool wordWasQuoted() const { return m_wordWasQuoted; }
    /// Whether a pair of carets became one in any text so far.
    bool hasJoinedCarets() const { return m_joinedCarets; }

private:
    void readWord()
    {
        m_word.clear();
        m_wordWasQuoted = false;
        bool inside = false;
        while (m_position < m_text.size()) {
            const char c = m_text[m_position];
            if (!inside && (isBlank(c) || (m_interpreter && isOperator(c))))
                return;
            if (c == '\\') {
                readBackslashes();
            } else if (c == '"') {
                inside = !inside;
                m_wordWasQuoted = true;
                ++m_position;
            } else if (!inside && m_interpreter && m_text.substr(m_position, 2) == "^^") {
                m_word += '^';
                m_joinedCarets = true;
                m_position += 2;
            } else {
                m_word += c;
                ++m_position;
            }
        }
    }

    void readBackslashes()
    {
        const std::size_t end = std::min(m_text.find_first_not_of('\\', m_position), m_text.size());
        const std::size_t count = end - m_position;
        const bool beforeQuote = end < m_text.size() && m_text[end] == '"';
        m_word += m_text.substr(m_position, beforeQuote ? count / 2 : count);
        m_position = end;
        if (beforeQuote && count % 2 == 1) {
            m_word += '"';
            ++m_position;
        }
    }

    cmROStringT m_text;
    bool m_interpreter;
    std::size_t m_position = 0;
    char m_operator = 0;
    cmStringT m_word = "";
    bool m_wordWasQuoted = false;
    bool m_joinedCarets = false;
};

/// A word of a command that stands there without quotes, and means the same to both shells.
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

/// `data` in double quotes, each character that cmd.exe knows behind a caret, the quotes too: to it nothing is quoted then.
cmStringT behindCarets(cmROStringT data)
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

/// What cmd.exe passes on as exactly this word. In plain double quotes nearly everything is literal to it; a quote in the
/// word would end them too early, and a per cent sign name a variable even there. That sign stands between quoted
/// parts, so that a quote belongs to what could be the name: no variable is called that.
cmStringT quoteForWindowsShell(cmROStringT word)
{
    if (word.find_first_of("\"%") == cmROStringT::npos)
        return inDoubleQuotes(word);
    cmStringT text("");
    while (!word.empty()) {
        const std::size_t percent = std::min(word.find('%'), word.size());
        if (percent > 0)
            text += behindCarets(word.substr(0, percent));
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
        case Piece::end: return text;
        case Piece::blank: text += ' '; break;
        case Piece::shellOperator: text += reader.shellOperator(); break;
        case Piece::text:
            text += reader.wordWasQuoted() || !isShellWord(reader.word()) ? quote(reader.word()) : reader.word();
            break;
        }
    }
}

/// Whether windowsInterpreterText must refuse.
bool isBeyondWindowsShell(cmROStringT program, cmROStringT arguments)
{
    if (std::count(program.begin(), program.end(), '%') > 1)
        return true;
    bool lineBreak = program.find_first_of("\r\n") != cmROStringT::npos;
    bool pipeline = false;
    bool twiceRead = false;  // what a second reading could take for the end of quotes, or for a variable
    CommandLineReader reader(arguments, true);
    for (Piece piece = reader.next(); piece != Piece::end; piece = reader.next()) {
        pipeline |= piece == Piece::shellOperator && reader.shellOperator() == '|';
        lineBreak |= piece == Piece::text && reader.word().view().find_first_of("\r\n") != cmROStringT::npos;
        twiceRead |= piece == Piece::text && reader.word().view().find_first_of("\"!") != cmROStringT::npos;
    }
    return lineBreak || (pipeline && twiceRead);
}

/// What Windows starts as it is. Everything else, batch files first of all, would be run by another program, which reads the
/// arguments by rules of its own; and "a.bat. " or "a.bat\\." is a batch file to the system.
bool isWindowsProgram(cmROStringT name)
{
    const cmROStringT extension = name.substr(std::min(name.rfind('.'), name.size()));
    return cmEqualIgnoringCase(extension, ".exe") || cmEqualIgnoringCase(extension, ".com");
}

cmROStringT withoutEnclosingQuotes(cmROStringT text)
{
    const bool enclosed = text.size() >= 2 && text.front() == '"' && text.back() == '"';
    return enclosed ? text.substr(1, text.size() - 2) : text;
}

}  // namespace

CommandLine splitCommandLine(cmROStringT text)
{
    while (!text.empty() && isBlank(text.front()))
        text.remove_prefix(1);
    std::size_t end = 0;
    std::size_t next = 0;
    if (text.starts_with('"')) {
        text.remove_prefix(1);
        end = std::min(text.find('"'), text.size());
        next = std::min(end + 1, text.size());
    } else {
        end = std::min(text.find_first_of(" \t"), text.size());
        next = end;
    }
    next = std::min(text.find_first_not_of(" \t", next), text.size());
    return {text.substr(0, end), text.substr(next)};
}

cmArray<cmStringT> splitArguments(cmROStringT text)
{
    cmArray<cmStringT> arguments;
    CommandLineReader reader(text, false);
    for (Piece piece = reader.next(); piece != Piece::end; piece = reader.next()) {
        if (piece == Piece::text)
            arguments.push_back(reader.word());
    }
    return arguments;
}

cmStringT quoteArgument(cmROStringT data)
{
    if (!data.empty() && std::all_of(data.begin(), data.end(), isPlain) && data.find("^^") == cmROStringT::npos)
        return data;
    return inDoubleQuotes(data);
}

cmStringT inDoubleQuotes(cmROStringT data)
{
    cmStringT quoted("\"");
    std::size_t backslashes = 0;
    for (const char c : data) {
        // A quote needs the backslashes before it doubled, and one for itself.
        for (std::size_t i = 0; c == '"' && i <= backslashes; ++i)
            quoted += '\\';
        backslashes = c == '\\' ? backslashes + 1 : 0;
        quoted += c;
    }
    for (std::size_t i = 0; i < backslashes; ++i)
        quoted += '\\';
    quoted += '"';
    return quoted;
}

bool hasShellOperator(cmROStringT text)
{
    return std::any_of(text.begin(), text.end(), isOperator) || text.find("^^") != cmROStringT::npos;
}

bool needsInterpreter(cmROStringT arguments)
{
    CommandLineReader reader(arguments, true);
    for (Piece piece = reader.next(); piece != Piece::end; piece = reader.next()) {
        if (piece == Piece::shellOperator)
            return true;
    }
    return reader.hasJoinedCarets();
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
    // Real quotes: behind a caret they would not keep a program with blanks together.
    return cmCat(inDoubleQuotes(program)) + " " + interpreterText(arguments, &quoteForWindowsShell);
}

cmStringT findProgram(cmROStringT program, cmROStringT pathVariable, cmPathStyle style,
                      const std::function<bool(const cmStringT& path)>& isProgram)
{
    const bool windows = style == cmPathStyle::windows;
    const auto isSeparator = [style](char c) { return cmIsPathSeparator(c, style); };
    const std::size_t nameStart =
        static_cast<std::size_t>(std::find_if(program.rbegin(), program.rend(), isSeparator).base() - program.begin());
    const cmROStringT name = program.substr(nameStart);
    cmStringT complete(program);
    if (windows && name.find('.') == cmROStringT::npos)
        complete += ".exe";
    // A colon in the name itself would open another stream of the file.
    if (windows && (!isWindowsProgram(complete) || name.find(':') != cmROStringT::npos))
        return {};

    if (cmIsAbsolutePath(program, style))
        return isProgram(complete) ? complete : cmStringT();
    if (name.empty() || nameStart > 0)
        return {};
    for (std::size_t start = 0; start <= pathVariable.size();) {
        const std::size_t end = std::min(pathVariable.find(windows ? ';' : ':', start), pathVariable.size());
        cmROStringT directory = pathVariable.substr(start, end - start);
        if (windows)
            directory = withoutEnclosingQuotes(directory);
        if (cmIsAbsolutePath(directory, style)) {
            cmStringT candidate = cmJoinPath(directory, complete, style);
            if (isProgram(candidate))
                return candidate;
        }
        start = end + 1;
    }
    return {};
}
