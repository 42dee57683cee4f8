#pragma once

#include "txhost/LogLine.h"
#include "txhost/browse/BrowseData.h"
#include "txhost/browse/CommitPane.h"
#include "txhost/browse/HistoryPane.h"
#include "txhost/browse/Key.h"
#include "txhost/browse/Picture.h"
#include "txhost/browse/Prompt.h"
#include "txhost/browse/RevisionsPane.h"
#include "txhost/browse/RowFinder.h"

#include <optional>

/// What `txhost browse` shows, and what its keys do. It knows no terminal and never waits: it shows what it was told so far, and
/// says what it wants to know. For one thread.
class BrowseScreen {
public:
    BrowseScreen(cmStringT repository, Symbols symbols);

    /// The picture's size from now on. Any size will do.
    void resize(Picture::Size size);
    /// Does what the key stands for. Afterwards `wants`, `picture`, `hasLeft` and `takeCopied` may tell something else.
    void press(const Key& key);
    /// Shows what is new. What does not belong to `wants` (any more) is put away. Afterwards `wants` may be others.
    void take(BrowseNews news);

    /// What is needed for what is shown.
    const BrowseWants& wants() const { return m_wants; }
    /// Whether nothing that is shown is still awaited. The history need not be loaded to its end.
    bool isComplete() const;
    Picture picture() const;

    bool hasLeft() const { return m_hasLeft; }
    /// What the user has copied since the last call; null when nothing.
    cmStringT takeCopied();

private:
    /// What is below a list. The history and a file's revisions have one each.
    struct Below {
        CommitPane commit;
        bool isOpen = false;
        bool hasFocus = false;
    };
    /// How many lines each part of the picture has, from the top.
    struct Layout {
        std::size_t list = 0;
        std::size_t bar = 0;  ///< the title of what is below the list
        std::size_t commit = 0;
        std::size_t status = 0;
    };

    // The keys.
    void handle(const Key& key);
    bool pressInPane(const Key& key);
    void pressMouse(const Key& key);
    void pressInPrompt(const Key& key);
    void changePrompt();
    void acceptPrompt();
    void cancelPrompt();
    void command(char32_t code);
    void goIn();
    void goBack(bool isEscape);
    void openPrompt(PromptKind kind);
    void openRevisions(bool fromHead);
    void copy();
    // Ways to other commits.
    void goTo(const cmStringT& hash);
    void goToRow(std::int32_t row);
    void goBackFromPrompt();
    void goToParent();
    void goToChild();
    void goToHead();
    void followLine(bool isDownFirst);
    void jumpTo(cmROStringT text);
    void searchOn(bool backwards);
    void say(cmStringT message, bool isBadNews = true);

    void arrange();
    void wantDetails();
    void takeFound(const RowFound& found);
    std::shared_ptr<const CommitDetails> knownOfSelected() const;
    std::optional<cmStringT> selectedHash() const;
    const ListWindow& list() const { return m_revisions.isOpen() ? m_revisions.window() : m_history.window(); }
    Below& below() { return m_revisions.isOpen() ? m_ofRevisions : m_ofHistory; }
    const Below& below() const { return m_revisions.isOpen() ? m_ofRevisions : m_ofHistory; }
    bool hasFocusBelow() const { return below().isOpen && below().hasFocus; }
    bool hasRoomForBoth() const;
    bool hasWantedRows() const;
    Layout layout() const;
    void drawBelow(Picture& picture, const Layout& parts) const;
    cmStringT filterRemark() const;
    void drawLastLine(Picture& picture) const;

    const cmStringT m_repository;
    const Symbols m_symbols;
    Picture::Size m_size;
    BrowseWants m_wants;
    HistoryPane m_history;
    RevisionsPane m_revisions;
    Below m_ofHistory;
    Below m_ofRevisions;
    RowFinder m_finder;
    std::optional<Prompt> m_prompt;
    // Of the cursor when the prompt was opened.
    std::int32_t m_promptRow = 0;
    std::uint32_t m_promptEdition = 0;  ///< that the row belongs to
    std::optional<cmStringT> m_promptHash;
    cmStringT m_searched{""};  ///< the text of the last search
    std::optional<std::size_t> m_helpPage;
    cmStringT m_message{""};
    bool m_isBadNews = false;
    cmStringT m_copied;
    bool m_hasLeft = false;
};
