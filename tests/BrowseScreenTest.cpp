#include "txhost/browse/BrowseScreen.h"

#include <gtest/gtest.h>

#include <string>

namespace {

/// What is seen: the text, without blanks at the ends of lines.
std::string textOf(const Picture& picture)
{
    std::string text = "\n";
    for (const auto& line : picture.lines) {
        for (const StyledText& piece : line)
            text += piece.text.view();
        text.erase(text.find_last_not_of(' ') + 1);
        text += "\n";
    }
    return text;
}

/// A hash that begins with the commit's number.
cmStringT hashOf(std::int32_t commit)
{
    const std::string digits = std::to_string(1000000 + commit);
    return cmROStringT(digits + std::string(40 - digits.size(), 'f'));
}

std::int32_t commitOf(cmROStringT hash)
{
    return std::atoi(std::string(hash.substr(0, 7)).c_str()) - 1000000;
}

/// Answers a screen from a made history: a chain of commits, the working copy first. A filter's rows are those of the commits
/// whose number it divides.
class MadeSession {
public:
    explicit MadeSession(Picture::Size size = {60, 8}, Symbols symbols = Symbols::unicode) : screen("/home/repo", symbols)
    {
        state.isLoading = false;
        screen.resize(size);
        answer();
    }

    /// Presses keys, and tells what is wanted after each of them.
    MadeSession& press(cmROStringT keys)
    {
        const cmArray<Key> all = keysFromText(keys).value();
        for (const Key& key : all) {
            screen.press(key);
            answer();
        }
        return *this;
    }
    std::string text() const { return textOf(screen.picture()); }

    void answer()
    {
        for (int i = 0; i < 9 && !screen.isComplete(); ++i) {
            const BrowseWants wants = screen.wants();
            BrowseNews news;
            news.state = stateFor(wants);
            news.rows = rowsFor(wants);
            if (wants.details)
                news.details = detailsOf(*wants.details);
            if (wants.history)
                news.history = historyOf(*wants.history);
            if (wants.search)
                news.found = RowFound{wants.search->number, rowFor(*wants.search)};
            news.workingCopy = "2 modified, 1 staged";
            screen.take(std::move(news));
        }
    }

    HistoryState stateFor(const BrowseWants& wants)
    {
        if (wants.filter != state.filter || wants.load != state.load)
            ++state.edition;
        state.filter = wants.filter;
        state.load = wants.load;
        divisor = wants.filter.isEmpty() ? 1 : std::max(1, std::atoi(wants.filter.c_str()));
        state.rowCount = divisor == 1 ? commits : commits / divisor;
        state.names = std::make_shared<cmArray<GitRefName>>(cmArray<GitRefName>{
            {RefKind::head, "main", hashOf(1)}, {RefKind::branch, "feature/x", hashOf(500)}, {RefKind::tag, "v1.0", hashOf(40)}});
        return state;
    }

    /// The commit in a row.
    std::int32_t commitIn(std::int32_t row) const { return divisor == 1 ? row : (row + 1) * divisor; }

    HistoryRows rowsFor(const BrowseWants& wants) const
    {
        HistoryRows rows{state.edition, wants.firstRow, {}};
        const std::int32_t end = std::min(state.rowCount, wants.firstRow + wants.rowCount);
        for (std::int32_t number = wants.firstRow; number < end; ++number)
            rows.rows.push_back(rowOf(commitIn(number)));
        return rows;
    }

    HistoryRow rowOf(std::int32_t commit) const
    {
        HistoryRow row;
        row.hash = commit == 0 ? cmStringT("") : hashOf(commit);
        row.parents = {hashOf(commit + 1)};
        row.author = "Ada";
        row.date = GitDateTime::pack({2024, 7, 1, 12, 0, 59});
        row.subject = cmROStringT("Subject " + std::to_string(commit));
        if (commit == 1)
            row.branches = {"main"};
        if (commit == 4)
            row.tags = {"v1.0"};
        row.isOnCurrentBranch = commit % 2 == 1;
        row.graph = {0, {{0, 0, GraphEdgeKind::begins}}};
        return row;
    }

    std::shared_ptr<CommitDetails> detailsOf(cmROStringT hash) const
    {
        auto details = std::make_shared<CommitDetails>();
        details->hash = hash;
        details->isComplete = true;
        if (!hash.empty()) {
            const HistoryRow row = rowOf(commitOf(hash));
            details->parents = row.parents;
            details->author = row.author;
            details->email = "ada@example.org";
            details->date = row.date;
            details->message = {row.subject, "", "Why."};
        }
        details->files = {{"a.cpp",
                           "",
                           'M',
                           hash.empty(),
                           hash.empty(),
                           false,
                           1,
                           1,
                           {{"@@ -1,2 +1,2 @@", {" int a;", "-\tint b;", "+\tint c;"}}}},
                          {"b.cpp", "old.cpp", 'R', false, false, false, 0, 0, {}}};
        return details;
    }

    std::shared_ptr<FileHistory> historyOf(const FileQuestion& question) const
    {
        auto history = std::make_shared<FileHistory>();
        history->question = question;
        for (const std::int32_t commit : {7, 70})
            history->revisions.push_back({hashOf(commit), "Ada", {}, "Revision"});
        return history;
    }

    std::int32_t rowFor(const RowSearch& search) const
    {
        for (std::int32_t i = 0; i < state.rowCount; ++i) {
            const std::int32_t number =
                ((search.backwards ? search.from - i : search.from + i) + state.rowCount) % state.rowCount;
            const HistoryRow row = rowOf(commitIn(number));
            const bool isChild = std::find(row.parents.begin(), row.parents.end(), search.text) != row.parents.end();
            if (search.kind == SearchKind::child
                    ? isChild
                    : (search.kind == SearchKind::hash ? row.hash : row.subject).view().find(search.text) != cmROStringT::npos)
                return number;
        }
        return -1;
    }

    BrowseScreen screen;
    HistoryState state;
    std::int32_t commits = 1000;
    std::int32_t divisor = 1;
};

/// The picture from the bar on that is above a commit's details.
std::string belowBar(const MadeSession& session)
{
    const std::string text = session.text();
    return text.substr(text.find("──"));
}

TEST(BrowseScreen, OpensDetailsDiffAndRevisionsAndGoesBack)
{
    MadeSession session({60, 16});
    const std::string details = session.press("jj<Enter><Enter>jjjjjjjjjj").text();
    EXPECT_EQ(details, R"(
 ●         Working copy: 2 modified, 1 st…  2024-07-01 12:00
▏● 1000001 [main] Subject 1                 2024-07-01 12:00
 ● 1000002 Subject 2                        2024-07-01 12:00
▏● 1000003 Subject 3                        2024-07-01 12:00
 ● 1000004 <v1.0> Subject 4                 2024-07-01 12:00
▏● 1000005 Subject 5                        2024-07-01 12:00
 ● 1000006 Subject 6                        2024-07-01 12:00
── commit 1000002 ──────────────────────────────────────────

    Subject 2

    Why.

2 files, +1 -1
 M    +1    -1  a.cpp
999 commits                                          3/1,000
)");
    EXPECT_EQ(belowBar(session.press("<Enter>j")), R"(── 1/2  M a.cpp ────────────────────────────────────────────
@@ -1,2 +1,2 @@
 int a;
-        int b;
+        int c;



999 commits                                          3/1,000
)");
    EXPECT_EQ(session.press("<Left>H").text(), R"(
1000007 Revision
1000070 Revision





── commit 1000007 ──────────────────────────────────────────
    Subject 7

    Why.

2 files, +1 -1
 M    +1    -1  a.cpp
 R              old.cpp -> b.cpp
a.cpp                                                    1/2
)");
    EXPECT_EQ(session.press("<Esc>").text(), details);
}

}  // namespace
