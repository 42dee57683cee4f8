#include "common/CommandLine.h"

#include <algorithm>

namespace {

constexpr cmROStringT blanks = " \t";
constexpr cmROStringT caretPair = "^^";

bool isBlank(char c)
{
    return blanks.find(c) != cmROStringT::npos;
}

bool isOperator(char c)
{
    return c == '|' || c == '<' || c == '>' || c == '&';
}

}  // namespace

CommandLine splitCommandLine(cmROStringT text)
{
    text.remove_prefix(std::min(text.find_first_not_of(blanks), text.size()));
    const bool quoted = text.starts_with('"');
    if (quoted)
        text.remove_prefix(1);
    const std::size_t end = std::min(quoted ? text.find('"') : text.find_first_of(blanks), text.size());
    const cmROStringT program = text.substr(0, end);
    text.remove_prefix(std::min(quoted ? end + 1 : end, text.size()));
    text.remove_prefix(std::min(text.find_first_not_of(blanks), text.size()));
    return {program, text};
}

cmArray<cmStringT> splitArguments(cmROStringT text)
{
    using Token = CommandLineReader::Token;
    cmArray<cmStringT> arguments;
    CommandLineReader reader(text, false);
    for (Token token = reader.next(); token != Token::end; token = reader.next()) {
        if (token == Token::word)
            arguments.push_back(reader.word());
    }
    return arguments;
}

bool hasShellOperator(cmROStringT text)
{
    return std::any_of(text.begin(), text.end(), isOperator) || text.find(caretPair) != cmROStringT::npos;
}

bool needsInterpreter(cmROStringT arguments)
{
    using Token = CommandLineReader::Token;
    CommandLineReader reader(arguments, true);
    for (Token token = reader.next(); token != Token::end; token = reader.next()) {
        if (token == Token::shellOperator || reader.hasJoinedCarets())
            return true;
    }
    return false;
}

CommandLineReader::Token CommandLineReader::next()
{
    if (m_position == m_text.size())
        return Token::end;
    const char c = m_text[m_position];
    if (isBlank(c)) {
        ++m_position;
        return Token::blank;
    }
    if (m_shellOperators && isOperator(c)) {
        m_operator = c;
        ++m_position;
        return Token::shellOperator;
    }
    readWord();
    return Token::word;
}

void CommandLineReader::readWord()
{
    m_word.clear();
    m_wordWasQuoted = false;
    bool insideQuotes = false;
    while (m_position < m_text.size()) {
        const char c = m_text[m_position];
        if (!insideQuotes && (isBlank(c) || (m_shellOperators && isOperator(c))))
            return;
        if (c == '\\') {
            readBackslashes();
        } else if (c == '"') {
            insideQuotes = !insideQuotes;
            m_wordWasQuoted = true;
            ++m_position;
        } else if (!insideQuotes && m_shellOperators && m_text.substr(m_position, 2) == caretPair) {
            m_word += '^';
            m_joinedCarets = true;
            m_position += 2;
        } else {
            m_word += c;
            ++m_position;
        }
    }
}

void CommandLineReader::readBackslashes()
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
