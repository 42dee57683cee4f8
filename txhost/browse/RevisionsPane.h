#pragma once

#include "txhost/browse/BrowseData.h"
#include "txhost/browse/ListWindow.h"
#include "txhost/browse/StyledLine.h"

#include <memory>
#include <optional>

/// The revisions of a file, the newest first, with the cursor on one of them.
class RevisionsPane {
public:
    /// Asks for a file's revisions, in place of those that were shown: none are, until `take` brings them.
    void open(FileQuestion question);
    /// Puts the question and its revisions away.
    void close();
    bool isOpen() const { return m_question.has_value(); }
    const std::optional<FileQuestion>& question() const { return m_question; }
    /// What there is for the question. Answers to others are ignored.
    void take(std::shared_ptr<const FileHistory> history);
    bool isComplete() const { return m_history != nullptr; }

    /// Null when there is none.
    const FileRevision* selected() const;
    ListWindow& window() { return m_window; }
    const ListWindow& window() const { return m_window; }
    cmArray<cmArray<StyledText>> lines(std::size_t width, Symbols symbols, bool hasFocus) const;

private:
    std::optional<FileQuestion> m_question;
    std::shared_ptr<const FileHistory> m_history;
    ListWindow m_window;
};
