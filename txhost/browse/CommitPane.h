#pragma once

#include "txhost/browse/DetailsPane.h"
#include "txhost/browse/DiffPane.h"

#include <memory>
#include <optional>

/// What is shown of a commit below a list: its details, or what it has changed in one of its files.
class CommitPane {
public:
    /// Details of another commit close the diff.
    void show(std::shared_ptr<const CommitDetails> details);
    const CommitDetails* details() const { return m_details.details().get(); }
    /// The commit that the line with the cursor names; null when it names none.
    cmStringT commit() const { return m_diff ? cmStringT() : m_details.target().commit; }
    /// The file whose diff is shown or whose line has the cursor; null when there is none.
    const FileChange* file() const;
    void goToFile(cmROStringT path) { m_details.goToFile(path); }

    /// Moves the cursor or the text, if `key` is one that does.
    bool press(const Key& key);
    /// Opens the diff of the file whose line has the cursor. Returns false when it is no file's.
    bool openDiff();
    /// Returns false when none is open.
    bool closeDiff();

    ListWindow& window() { return m_diff ? m_diff->window() : m_details.window(); }
    void setHeight(std::size_t lines);
    cmStringT title() const;
    cmArray<cmArray<StyledText>> lines(std::size_t width, Symbols symbols, bool hasFocus) const;

private:
    DetailsPane m_details;
    std::optional<DiffPane> m_diff;
    std::size_t m_height = 0;
};
