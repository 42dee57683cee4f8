#pragma once

#include "txhost/browse/BrowseData.h"
#include "txhost/browse/ListWindow.h"
#include "txhost/browse/StyledLine.h"

#include <memory>

/// A commit's hash, parents, author, date, message and files, one below the other, with a cursor over these lines.
class DetailsPane {
public:
    /// Where the line with the cursor leads.
    struct Target {
        cmStringT commit;                  ///< its hash; null when it leads to none
        const FileChange* file = nullptr;  ///< valid until show()
    };

    /// Details of another commit are shown from their first line. Null: there are none yet.
    void show(std::shared_ptr<const CommitDetails> details);
    const std::shared_ptr<const CommitDetails>& details() const { return m_details; }
    Target target() const;
    /// Moves the cursor to the file with this path, if there is one.
    void goToFile(cmROStringT path);

    ListWindow& window() { return m_window; }
    cmArray<cmArray<StyledText>> lines(std::size_t width, Symbols symbols, bool hasFocus) const;

private:
    enum class Part { commit, parent, author, date, failure, message, summary, file, blank };
    struct Line {
        Part part;
        std::size_t number = 0;  ///< of the parent, the line of the message, or the file
    };

    void addLines(Part part, std::size_t count);
    void draw(StyledLine& line, const Line& of) const;

    std::shared_ptr<const CommitDetails> m_details;
    cmArray<Line> m_lines;
    ListWindow m_window;
};
