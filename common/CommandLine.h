#pragma once

#include "common/cmArray.h"
#include "common/cmString.h"

#include <cstddef>
#include <cstdint>

// Command lines as pure text, in the grammar that Windows programs expect, on every platform: blanks and tabs separate
// arguments; double quotes enclose; a backslash is literal, except that in a run of backslashes before a double quote each
// pair stands for one backslash, and an odd one makes the quote literal.

/// A command line, split behind its program.
struct CommandLine {
    cmStringT program;    ///< without its quotes
    cmStringT arguments;  ///< the unchanged rest of the text, without leading blanks
};

/// Splits a command line. A quoted program ends at its closing quote even when no blank follows (`"git"remote show`), an
/// unquoted one at the first blank.
CommandLine splitCommandLine(cmROStringT text);

/// Splits arguments into the words that a program receives.
cmArray<cmStringT> splitArguments(cmROStringT text);

/// Whether a command line contains one of the shell operators | < > & or a pair of carets, in or outside quotes.
bool hasShellOperator(cmROStringT text);

/// Whether one of them stands outside quotes, so that only a command interpreter can run the command.
bool needsInterpreter(cmROStringT arguments);

/// Reads arguments token by token. With `shellOperators`, operators outside quotes are tokens of their own and a pair of carets
/// outside quotes reads as one caret. Keeps a view of the text. One thread at a time.
class CommandLineReader {
public:
    enum class Token : std::uint8_t { end, blank, word, shellOperator };

    CommandLineReader(cmROStringT text, bool shellOperators) : m_text(text), m_shellOperators(shellOperators) {}

    Token next();

    /// The operator character of the last token.
    char shellOperator() const { return m_operator; }
    /// The last word without its quotes; `""` gives an empty word.
    const cmStringT& word() const { return m_word; }
    /// Whether the last word had quotes. A quoted digit before a redirection is data, not a stream number.
    bool wordWasQuoted() const { return m_wordWasQuoted; }
    /// Whether a pair of carets was read as one in any word so far.
    bool hasJoinedCarets() const { return m_joinedCarets; }

private:
    void readWord();
    void readBackslashes();

    cmROStringT m_text;
    bool m_shellOperators;
    std::size_t m_position = 0;
    char m_operator = 0;
    cmStringT m_word = "";
    bool m_wordWasQuoted = false;
    bool m_joinedCarets = false;
};
