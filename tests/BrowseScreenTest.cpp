#include "txhost/browse/BrowseScreen.h"

#include "txhost/EscapedText.h"
#include "txhost/TextWidth.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <iterator>
#include <random>
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
            screen.resize(screen.picture().size);  // as a terminal tells it, again and again
            screen.press(key);
            answer();
        }
        return *this;
    }
    /// Presses keys that come together.
    MadeSession& pressAtOnce(cmROStringT keys)
    {
        const cmArray<Key> all = keysFromText(keys).value();
        for (const Key& key : all)
            screen.press(key);
        answer();
        return *this;
    }
    std::string text() const { return textOf(screen.picture()); }

    void answer()
    {
        for (int i = 0; i < 9 && !screen.isComplete(); ++i)
            tell();
    }

    void tell()
    {
        const BrowseWants wants = screen.wants();
        BrowseNews news;
        news.state = stateFor(wants);
        news.rows = rowsFor(wants);
        if (wants.details && (!answered || wants.details != answered->details || wants.detailsNumber != answered->detailsNumber))
            news.details = detailsOf(*wants.details);
        if (wants.history && (!answered || wants.history != answered->history || wants.historyNumber != answered->historyNumber))
            news.history = historyOf(*wants.history);
        if (wants.search)
            news.found = RowFound{wants.search->number, rowFor(*wants.search), state.edition};
        news.workingCopy = "2 modified, 1 staged";
        answered = wants;
        screen.take(std::move(news));
    }

    HistoryState stateFor(const BrowseWants& wants)
    {
        if (wants.filter != state.filter || wants.load != state.load)
            ++state.edition;
        state.filter = wants.filter;
        state.load = wants.load;
        divisor = wants.filter.isEmpty() ? 1 : std::max(1, std::atoi(wants.filter.c_str()));
        state.rowCount = divisor == 1 ? commits : commits / divisor;
        state.names = std::make_shared<cmArray<GitRefName>>(cmArray<GitRefName>{{RefKind::head, "main", hashOf(1)},
                                                                                {RefKind::branch, "feature/1000700", hashOf(500)},
                                                                                {RefKind::tag, "v1.0", hashOf(40)}});
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
        if (commit == 2)
            row.graph.edges.push_back({0, 1, GraphEdgeKind::begins, 600, hashOf(600)});
        if (commit == 2)
            row.graph.edges.push_back({0, 0, GraphEdgeKind::arrowUp, 0, ""});
        if (commit == 599)
            row.graph.edges.push_back({1, 1, GraphEdgeKind::arrowUp, 2, hashOf(2)});
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
        history->failure = historyFailure;
        for (const std::int32_t commit : historyFailure.isNull() ? cmArray<std::int32_t>{7, 70} : cmArray<std::int32_t>{})
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
    std::optional<BrowseWants> answered;  ///< what is wanted still is not answered again
    cmStringT historyFailure;
    std::int32_t commits = 1000;
    std::int32_t divisor = 1;
};

/// The picture from the bar on that is above a commit's details.
std::string belowBar(const MadeSession& session)
{
    const std::string text = session.text();
    return text.substr(text.find("──"));
}

/// The commit in the first line under a cursor; 0 is the working copy.
std::int32_t commitUnderCursor(const MadeSession& session)
{
    for (const auto& line : session.screen.picture().lines) {
        std::string text;
        for (const StyledText& piece : line)
            text += piece.style.isReversed ? piece.text.view() : "";
        if (!text.empty())
            return text.find("100") == std::string::npos ? 0 : commitOf(cmROStringT(text).substr(text.find("100")));
    }
    return -1;
}

TEST(BrowseScreen, OpensDetailsDiffAndRevisionsAndGoesBack)
{
    MadeSession session({60, 16});
    const std::string details = session.press("jj<Enter><Enter>jjjjjjjjjj").text();
    EXPECT_EQ(details, R"(
 ●         Working copy: 2 modified, 1 st…  2024-07-01 12:00
▏● 1000001 [main] Subject 1                 2024-07-01 12:00
 ●─╮ 1000002 Subject 2                      2024-07-01 12:00
▏●   1000003 Subject 3                      2024-07-01 12:00
 ●   1000004 <v1.0> Subject 4               2024-07-01 12:00
▏●   1000005 Subject 5                      2024-07-01 12:00
 ●   1000006 Subject 6                      2024-07-01 12:00
── commit 1000002 ──────────────────────────────────────────

    Subject 2

    Why.

2 files, +1 -1
 M    +1    -1  a.cpp
999 commits                                          3/1,000
)");
    session.answered.reset();
    session.tell();
    EXPECT_EQ(session.text(), details) << "of the same commit";
    const std::string diff = belowBar(session.press("<Enter>j"));
    EXPECT_EQ(diff, R"(── 1/2  M a.cpp ────────────────────────────────────────────
@@ -1,2 +1,2 @@
 int a;
-        int b;
+        int c;



999 commits                                          3/1,000
)");
    EXPECT_EQ(session.screen.picture().lines[11].front().style.colour, 32);
    session.answered.reset();
    session.tell();
    EXPECT_EQ(belowBar(session), diff) << "of the same commit";
    session.press("]<Left>y<Up><Enter>L");
    EXPECT_EQ(session.screen.takeCopied(), "b.cpp") << "the line of the file whose diff was shown";
    EXPECT_EQ(session.screen.wants().history, FileQuestion{"a.cpp"});
    EXPECT_EQ(session.press("<Esc><Right>H").screen.wants().history, (FileQuestion{"a.cpp", hashOf(2)}));
    EXPECT_EQ(session.text(), R"(
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
    const std::string revisions = session.text();
    EXPECT_EQ(session.pressAtOnce("jk").text(), revisions);
    EXPECT_EQ(session.pressAtOnce("hH").text(), revisions);
    session.historyFailure = "broken";
    EXPECT_EQ(session.press("hH").screen.picture().lines[0].front().style.colour, 31) << session.text();
    const std::size_t toTitle = details.find("commit 1000002") + 14;
    EXPECT_EQ(session.press("<Esc><Left><Left>").text().substr(0, toTitle), details.substr(0, toTitle));
}

TEST(BrowseScreen, GoesToCommitsByNameHashTextAndFamily)
{
    MadeSession session;
    const auto row = [&](cmROStringT keys) { return commitUnderCursor(session.press(keys)); };
    EXPECT_EQ(row(":feat<Tab><Enter>"), 500);
    EXPECT_EQ(row(":V1<Enter>"), 40);
    EXPECT_EQ(row(":1000700<Enter>"), 700);
    EXPECT_EQ(row(":HEAD<Enter>"), 1);
    EXPECT_EQ(row("10"), 1) << "no command";
    EXPECT_EQ(row("pp"), 3);
    EXPECT_EQ(row("c"), 2);
    EXPECT_EQ(row("o"), 600);
    EXPECT_EQ(row(">"), 2) << "the only end of its line";
    EXPECT_EQ(row("<lt>"), 0);
    EXPECT_EQ(row("@"), 1);
    EXPECT_EQ(row("/99"), 99);
    EXPECT_EQ(row("<Backspace>8"), 98);
    EXPECT_EQ(row("<Esc>"), 1);
    EXPECT_EQ(row("/t 99<Enter>nn"), 991);
    EXPECT_EQ(row("NN"), 99);
    EXPECT_EQ(row("N"), 999) << "from the first match to the last one";
    EXPECT_EQ(row("p"), 999);
    EXPECT_NE(session.text().find("not found: 1001000"), std::string::npos);
    EXPECT_EQ(row(":nowhere<Enter>"), 999);
    EXPECT_NE(session.text().find("no branch, tag or hash: nowhere"), std::string::npos);
    EXPECT_EQ(row("g<Enter>jp"), 1) << "also from the details";
    EXPECT_EQ(row("jy"), 2);
    EXPECT_EQ(session.screen.takeCopied(), hashOf(2)) << "of the parent's line";
    EXPECT_EQ(row("<Enter>"), 2) << "the details of the parent";
    session.press("Gy");
    EXPECT_EQ(session.screen.takeCopied(), "b.cpp");
    EXPECT_EQ(session.press("<Esc>").screen.wants().details, std::nullopt) << "no room for it below the rows";
    EXPECT_TRUE(session.screen.takeCopied().isNull());
}

TEST(BrowseScreen, KeepsTheSelectedCommitInOtherRows)
{
    MadeSession session;
    EXPECT_EQ(commitUnderCursor(session.press("/Subject 70<Enter>f7")), 70);
    EXPECT_EQ(session.screen.wants().filter, "7");
    EXPECT_EQ(commitUnderCursor(session.press("0")), 70);
    EXPECT_EQ(commitUnderCursor(session.press("<Backspace><Backspace>9")), 9) << "has no row";
    EXPECT_EQ(commitUnderCursor(session.press("<Esc>")), 70);
    EXPECT_EQ(session.screen.wants().filter, "");
    EXPECT_EQ(commitUnderCursor(session.pressAtOnce("f7<Enter>/").press("<Esc>")), 70) << "where it is in the new rows";
    EXPECT_NE(session.press("p").text().find("the filter leaves it out: Esc ends it"), std::string::npos);
    session.state.isFiltering = true;
    session.tell();
    EXPECT_FALSE(session.screen.isComplete());
    session.state.isFiltering = false;
    session.press("<Esc>");
    EXPECT_EQ(commitUnderCursor(session.press("f9<Enter>j<Esc>")), 18) << "the user has gone there";
    session.commits = 10;
    EXPECT_EQ(commitUnderCursor(session.press("R")), 9);
    EXPECT_EQ(session.screen.wants().load, 2u);
    session.commits = 1000;
    EXPECT_EQ(commitUnderCursor(session.press("R")), 18);
}

TEST(BrowseScreen, FollowsTheEndOfALoadAndShowsNothingOld)
{
    MadeSession session;
    session.state.isLoading = true;
    session.press("RG");
    session.commits = 2000;
    session.tell();
    session.answer();
    EXPECT_EQ(commitUnderCursor(session), 1999);
    BrowseNews news;
    news.state = session.state;
    ++news.state->edition;
    session.screen.take(std::move(news));
    EXPECT_FALSE(session.screen.isComplete());
    EXPECT_EQ(session.screen.wants().search->text, hashOf(1999)) << "the commit that was selected";
    EXPECT_EQ(session.text(), "\n…\n…\n…\n…\n…\n…\n…\n1,999 commits · loading …                        2,000/2,000\n");
    session.screen.press({KeyKind::character, '@'});
    news.state = session.state;
    news.state->edition += 2;
    news.found = RowFound{session.screen.wants().search->number, 5, news.state->edition};
    session.screen.take(std::move(news));
    news.found->number = session.screen.wants().search->number;
    ++news.found->edition;
    session.screen.take({{}, {}, {}, {}, news.found, {}});
    EXPECT_TRUE(session.screen.wants().search) << "the answers were for other rows";
}

TEST(BrowseScreen, TheMouseSelectsOpensAndScrolls)
{
    MadeSession session({60, 20});
    EXPECT_EQ(commitUnderCursor(session.press("<Click:5,9>")), 5);
    EXPECT_EQ(session.screen.wants().details, std::nullopt);
    session.press("<DoubleClick:4,9>");
    EXPECT_EQ(session.screen.wants().details, hashOf(4));
    EXPECT_EQ(commitUnderCursor(session.press("<WheelDown:2,0><WheelDown:2,0>")), 6);
    session.press("<WheelUp:2,0><DoubleClick:11,0>");
    EXPECT_EQ(commitUnderCursor(session), 7) << "the parent's line";
    EXPECT_EQ(commitUnderCursor(session.press("<Click:19,0><Click:99,0>")), 7);
}

/// Random values, many of which nobody expects.
class Chaos {
public:
    std::size_t below(std::size_t limit) { return m_engine() % limit; }
    bool oftenTrue() { return below(4) != 0; }

    cmStringT text()
    {
        constexpr cmROStringT pieces[] = {"a",    "\x1B[31m", "\u202E",  "\u4E2D\u4E2D\u4E2D",         "\uFE0F", "\t",
                                          "\r\n", "\xFF\x9B", "e\u0301", "\U0001F468\u200D\U0001F469", " b c ",  "\u2764"};
        cmStringT text("");
        for (std::size_t i = below(12); i > 0; --i)
            text += pieces[below(std::size(pieces))];
        return below(200) == 0 ? cmStringT(cmROStringT(std::string(100'000, 'x'))) : text;
    }

    Picture::Size size() { return below(3) == 0 ? Picture::Size{below(4), below(4)} : Picture::Size{below(150), below(50)}; }

    Key key()
    {
        constexpr cmROStringT often = "jkGg/n:f?o><H[]cph@yR\t";
        Key key{static_cast<KeyKind>(below(18)), static_cast<char32_t>(below(0x180)), below(60), below(160)};
        if (oftenTrue())
            key = keyOfCharacter(static_cast<char32_t>(often[below(often.size())]));
        return below(3) == 0 ? Key{KeyKind::enter} : key;
    }

    std::shared_ptr<CommitDetails> details(cmStringT hash)
    {
        auto details = std::make_shared<CommitDetails>();
        *details = {
            std::move(hash), {text()}, text(), text(), {}, {text(), text()}, {}, oftenTrue(), below(9) ? cmStringT() : text()};
        for (std::size_t i = below(9); i > 0; --i) {
            details->files.push_back(
                {text(), text(), "AMDR?"[below(5)], oftenTrue(), oftenTrue(), below(9) == 0, 1, 1 << 30, {}});
            for (std::size_t hunk = below(3); hunk > 0; --hunk)
                details->files.back().hunks.push_back({text(), {text(), "", text()}});
        }
        return details;
    }

    HistoryRows rows(std::uint32_t edition, std::int32_t first)
    {
        HistoryRows rows{edition, first, {}};
        for (std::size_t i = below(150); i > 0; --i) {
            HistoryRow row;
            row.hash = i % 9 ? text() : cmStringT("");
            row.subject = row.author = text();
            row.branches = {cmROStringT("E" + std::to_string(edition) + ";")};
            row.tags = {text(), text()};
            const auto column = [this] { return static_cast<std::uint16_t>(below(30)); };
            row.graph = {column(), {{column(), column(), static_cast<GraphEdgeKind>(below(6)), 5, text()}}};
            if (below(9) == 0)
                row.graph.column = graphNoColumn;
            rows.rows.push_back(row);
        }
        return rows;
    }

    BrowseNews news(const BrowseWants& wants, std::uint32_t& edition)
    {
        BrowseNews news;
        if (oftenTrue()) {
            edition = oftenTrue() ? edition : static_cast<std::uint32_t>(below(4));
            news.state = HistoryState{edition,
                                      wants.load,
                                      wants.filter,
                                      below(5) == 0,
                                      static_cast<std::int32_t>(below(3000)) - 5,
                                      oftenTrue(),
                                      0,
                                      below(9) ? cmStringT() : text(),
                                      below(9) == 0,
                                      oftenTrue(),
                                      {}};
            news.state->names = std::make_shared<cmArray<GitRefName>>(5, GitRefName{RefKind::head, text(), text()});
        }
        if (oftenTrue())
            news.rows = rows(oftenTrue() ? edition : static_cast<std::uint32_t>(below(4)),
                             oftenTrue() ? wants.firstRow : static_cast<std::int32_t>(below(3000)) - 50);
        if (oftenTrue())
            news.details = details(oftenTrue() ? wants.details.value_or("") : text());
        if (wants.history && oftenTrue())
            news.history = std::make_shared<FileHistory>(FileHistory{*wants.history, {{text(), text(), {}, text()}}, text()});
        news.found =
            RowFound{wants.search && oftenTrue() ? wants.search->number : 0, static_cast<std::int32_t>(below(5000)) - 3, edition};
        news.workingCopy = text();
        return news;
    }

private:
    std::mt19937 m_engine{7};
};

TEST(BrowseScreen, StaysWithinItsSizeAndItsRowsWhateverComes)
{
    Chaos chaos;
    BrowseScreen screen("repo", Symbols::unicode);
    Picture::Size size;
    std::uint32_t edition = 0;
    for (int step = 0; step < 2000 && !HasFailure(); ++step) {
        if (step % 5 == 0)
            screen.resize(size = chaos.size());
        else if (step % 5 == 1)
            screen.take(chaos.news(screen.wants(), edition));
        else
            screen.press(chaos.key());
        const Picture picture = screen.picture();
        ASSERT_EQ(picture.lines.size(), size.height);
        for (const auto& line : picture.lines) {
            cmStringT text("");
            for (const StyledText& piece : line)
                text += piece.text;
            EXPECT_LE(textWidth(text), size.width) << step << text.c_str();
            EXPECT_EQ(escapedForTerminal(text), text) << step;
            const std::size_t label = text.view().find("[E");
            const bool isWhole = label != cmROStringT::npos && text.view().substr(label + 3, 2) == ";]";
            EXPECT_TRUE(!isWhole || text[label + 2] == static_cast<char>('0' + edition)) << step << text.c_str();
        }
        EXPECT_TRUE(!picture.showsCursor || (picture.cursorRow < size.height && picture.cursorColumn < size.width)) << step;
        EXPECT_TRUE(screen.wants().firstRow >= 0 && screen.wants().rowCount > 0) << step;
    }
}

TEST(BrowseScreen, HelpListsTheKeysUntilOneIsPressed)
{
    MadeSession session({80, 24}, Symbols::plain);
    const std::string history = session.press("G").text();
    EXPECT_NE(session.press("?").text().find("leave (also Ctrl-C); suspend"), std::string::npos) << "all on one page";
    EXPECT_EQ(session.press("g").text(), history);
    session.screen.resize({30, 10});
    session.press("?jj");
    EXPECT_NE(session.text().find("any key: back"), std::string::npos);
    EXPECT_EQ(session.press("j:q").screen.hasLeft(), false) << "text";
    EXPECT_EQ(session.press("<C-c>").screen.hasLeft(), true);
}

}  // namespace
