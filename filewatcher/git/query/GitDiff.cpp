#include "filewatcher/git/query/GitDiff.h"

#include "filewatcher/git/GitQuotedName.h"

#include <algorithm>
#include <charconv>
#include <iterator>
#include <utility>

namespace {

constexpr std::size_t sidePrefixLength = 2;  // "a/" or "b/"

bool takePrefix(cmROStringT& text, cmROStringT prefix)
{
    if (!text.starts_with(prefix))
        return false;
    text.remove_prefix(prefix.size());
    return true;
}

/// Removes a range, "12,3" or "12", from the front of `text`. Leaves `count` as it is when the range has none.
bool takeRange(cmROStringT& text, std::int32_t& start, std::int32_t& count)
{
    const auto takeNumber = [&text](std::int32_t& number) {
        const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
        text.remove_prefix(static_cast<std::size_t>(end - text.data()));
        return error == std::errc() && number >= 0;
    };
    return takeNumber(start) && (!takePrefix(text, ",") || takeNumber(count));
}

/// Parses a line like "@@ -12,3 +12,4 @@ ..."; false for any other line.
bool readHunkHeader(cmROStringT line, GitDiffHunk& hunk)
{
    return takePrefix(line, "@@ -") && takeRange(line, hunk.oldStart, hunk.oldCount) && takePrefix(line, " +")
           && takeRange(line, hunk.newStart, hunk.newCount) && line.starts_with(" @@");
}

/// `name` without its prefix "a/" or "b/".
cmStringT withoutSide(const cmStringT& name)
{
    return name.view().substr(std::min(sidePrefixLength, name.length()));
}

/// The file name after "--- " or "+++ "; null for /dev/null. git appends a tab to a name that contains blanks.
cmStringT nameOfSide(cmROStringT text)
{
    const cmStringT name = gitNameOnLine(text.substr(0, text.find('\t')));
    return name == "/dev/null" ? cmStringT() : withoutSide(name);
}

/// NAME in "a/NAME b/NAME". For a binary file or a change of mode no other line has the name. Null when the two names differ (a
/// rename or a copy), since other lines have them then.
cmStringT nameOfBothSides(cmROStringT text)
{
    if (text.starts_with('"'))
        return withoutSide(takeQuotedGitName(text));
    const std::size_t half = text.size() / 2;
    if (text.size() % 2 == 0 || half <= sidePrefixLength || text[half] != ' ')
        return {};
    const cmROStringT name = text.substr(sidePrefixLength, half - sidePrefixLength);
    return name == text.substr(half + 1 + sidePrefixLength) ? cmStringT(name) : cmStringT();
}

/// Reads a diff line by line. A hunk ends where the counts in its header say, so that a line such as "--- x" inside a hunk is not
/// mistaken for a file header.
class DiffReader {
public:
    explicit DiffReader(cmROStringT text) : m_text(text) {}

    cmArray<GitDiffFile> read()
    {
        while (!m_text.empty()) {
            const cmROStringT line = cmTakeUntil(m_text, '\n');
            GitDiffHunk hunk;
            if (!readHunkHeader(line, hunk)) {
                readFileHeader(line);
                continue;
            }
            readLines(hunk);
            m_file.hunks.push_back(std::move(hunk));
        }
        endFile();
        return std::move(m_files);
    }

private:
    void readFileHeader(cmROStringT line)
    {
        if (takePrefix(line, "diff --git ")) {
            endFile();
            m_file.path = nameOfBothSides(line);
        } else if (line.starts_with("diff ")) {
            endFile();
        } else if (takePrefix(line, "--- ")) {
            if (!m_file.hunks.empty())
                endFile();
            takeName(nameOfSide(line));
        } else if (takePrefix(line, "+++ ")) {
            takeName(nameOfSide(line));
        } else if (takePrefix(line, "rename to ") || takePrefix(line, "copy to ")) {
            takeName(gitNameOnLine(line));
        }
    }

    void takeName(const cmStringT& name)
    {
        if (!name.isNull())
            m_file.path = name;
    }

    void readLines(GitDiffHunk& hunk)
    {
        std::int32_t oldLeft = hunk.oldCount;
        std::int32_t newLeft = hunk.newCount;
        while (!m_text.empty() && (oldLeft > 0 || newLeft > 0 || m_text.front() == '\\')) {
            const char kind =
                m_text.front() == '\n' ? ' ' : m_text.front();  // diff.suppressBlankEmpty drops the blank of an empty line
            if (cmROStringT("+- \\").find(kind) == cmROStringT::npos)
                return;
            oldLeft -= kind == '-' || kind == ' ' ? 1 : 0;
            newLeft -= kind == '+' || kind == ' ' ? 1 : 0;
            const cmROStringT line = cmTakeUntil(m_text, '\n');
            hunk.lines.push_back(line.empty() ? cmROStringT(" ") : line);
        }
    }

    /// Stores the file read so far. git writes a changed file type as a deletion and a creation of the same path in a row; the
    /// two are merged into one file.
    void endFile()
    {
        if (!m_files.empty() && m_files.back().path == m_file.path)
            std::move(m_file.hunks.begin(), m_file.hunks.end(), std::back_inserter(m_files.back().hunks));
        else if (!m_file.path.isEmpty())
            m_files.push_back(std::move(m_file));
        m_file = {};
    }

    cmROStringT m_text;
    cmArray<GitDiffFile> m_files;
    GitDiffFile m_file;
};

}  // namespace

cmArray<GitDiffFile> parseGitDiff(cmROStringT output)
{
    return DiffReader(output).read();
}
