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

/// Removes a range, "12,3" or "12", from the front of `text`. Leaves the count as it is when there is none.
bool takeRange(cmROStringT& text, GitLineRange& range)
{
    const auto takeNumber = [&text](std::int32_t& number) {
        const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
        text.remove_prefix(static_cast<std::size_t>(end - text.data()));
        return error == std::errc() && number >= 0;
    };
    return takeNumber(range.start) && (!takePrefix(text, ",") || takeNumber(range.count));
}

/// Parses a line like "@@ -12,3 +12,4 @@ ...", or "@@@ -12,3 -11,2 +12,4 @@@" of a combined diff: one sign more than parents at
/// both ends. Returns false for any other line.
bool readHunkHeader(cmROStringT line, GitDiffHunk& hunk)
{
    const cmROStringT signs = line.substr(0, std::min(line.find_first_not_of('@'), line.size()));
    line.remove_prefix(signs.size());
    while (hunk.oldRanges.size() + 1 < signs.size()) {
        if (!takePrefix(line, " -") || !takeRange(line, hunk.oldRanges.emplace_back()))
            return false;
    }
    return !hunk.oldRanges.empty() && takePrefix(line, " +") && takeRange(line, hunk.newRange) && takePrefix(line, " ")
           && line.starts_with(signs);
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
        } else if (takePrefix(line, "diff --cc ") || takePrefix(line, "diff --combined ")) {
            endFile();
            m_file.path = gitNameOnLine(line);
            m_file.combined = true;
        } else if (line.starts_with("diff ")) {
            endFile();
        } else if (takePrefix(line, "--- ")) {
            if (!m_file.hunks.empty())
                endFile();
            takeName(nameOfSide(line));
        } else if (takePrefix(line, "+++ ")) {
            takeName(nameOfSide(line));
        } else if (m_file.hunks.empty()) {  // behind a hunk, such a line belongs to a file whose header is damaged
            readDetail(line);
        }
    }

    void readDetail(cmROStringT line)
    {
        if (takePrefix(line, "rename to ") || takePrefix(line, "copy to ")) {
            takeName(gitNameOnLine(line));
        } else if (takePrefix(line, "rename from ") || takePrefix(line, "copy from ")) {
            m_file.oldPath = gitNameOnLine(line);
        } else if (line.starts_with("Binary files ")) {
            m_file.binary = true;
        } else if (takePrefix(line, "old mode ") || takePrefix(line, "deleted file mode ")) {
            m_file.oldMode = line;
        } else if (takePrefix(line, "new mode ") || takePrefix(line, "new file mode ")) {
            m_file.newMode = line;
        } else if (takePrefix(line, "mode ")) {  // of a combined diff: "100644,100644..100755"
            m_file.oldMode = cmTakeUntil(line, '.');
            m_file.newMode = line.substr(line.starts_with('.') ? 1 : 0);
        } else if (takePrefix(line, "index ")) {
            cmTakeUntil(line, ' ');
            if (!line.empty())  // the mode did not change
                m_file.oldMode = m_file.newMode = line;
        }
    }

    void takeName(const cmStringT& name)
    {
        if (!name.isNull())
            m_file.path = name;
    }

    void readLines(GitDiffHunk& hunk)
    {
        const std::size_t parents = hunk.oldRanges.size();
        cmArray<GitLineRange> left = hunk.oldRanges;
        std::int32_t newLeft = hunk.newRange.count;
        const auto anyLeft = [&] {
            return newLeft > 0 || std::ranges::any_of(left, [](const GitLineRange& range) { return range.count > 0; });
        };
        while (!m_text.empty() && (m_text.front() == '\\' || anyLeft())) {
            cmROStringT rest = m_text;
            cmStringT line = cmTakeUntil(rest, '\n');
            if (line.isEmpty() && parents == 1)
                line = " ";  // diff.suppressBlankEmpty drops the blank of an empty line; not so in a combined diff
            if (!line.view().starts_with('\\') && !countLine(line.view().substr(0, parents), left, newLeft))
                return;
            m_text = rest;
            hunk.lines.push_back(std::move(line));
        }
    }

    /// Takes a line with these first characters, one for each parent, from the lines that are left on each side. Returns false
    /// for what is no line of a hunk.
    static bool countLine(cmROStringT kinds, cmArray<GitLineRange>& left, std::int32_t& newLeft)
    {
        if (kinds.size() < left.size() || kinds.find_first_not_of("+- ") != cmROStringT::npos)
            return false;
        // A line that the result lacks is in the parents that have a '-' for it; any other one is in those that have a blank.
        const bool isLost = kinds.find('-') != cmROStringT::npos;
        for (std::size_t i = 0; i < left.size(); ++i)
            left[i].count -= kinds[i] == (isLost ? '-' : ' ') ? 1 : 0;
        newLeft -= isLost ? 0 : 1;
        return true;
    }

    /// Stores the file read so far. git writes a changed file type as a deletion and a creation of the same path in a row; the
    /// two are merged into one file.
    void endFile()
    {
        if (!m_files.empty() && m_files.back().path == m_file.path) {
            GitDiffFile& file = m_files.back();
            std::ranges::move(m_file.hunks, std::back_inserter(file.hunks));
            file.newMode = m_file.newMode;
            file.binary |= m_file.binary;
        } else if (!m_file.path.isEmpty()) {
            m_files.push_back(std::move(m_file));
        }
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
