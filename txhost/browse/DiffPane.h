#pragma once

#include "txhost/browse/BrowseData.h"
#include "txhost/browse/ListWindow.h"
#include "txhost/browse/StyledLine.h"

#include <memory>

/// What a commit has changed in one of its files, line by line.
class DiffPane {
public:
    /// Shows the file with this number from its first line.
    void open(std::shared_ptr<const CommitDetails> details, std::size_t file);
    /// Shows the same file as other details have it. Returns false when they do not have it.
    bool update(std::shared_ptr<const CommitDetails> details);
    /// Shows the file that is `step` further in the commit, if there is one.
    void turn(std::int32_t step);
    const FileChange& file() const { return m_details->files[m_file]; }

    ListWindow& window() { return m_window; }
    /// Shows text further on the right, or on the left. Returns false when it is shown from its beginning already.
    bool shift(bool isToRight);
    /// "2/5  M PATH".
    cmStringT title() const;
    cmArray<cmArray<StyledText>> lines(std::size_t width, Symbols symbols, bool hasFocus) const;

private:
    void countLines();
    void draw(StyledLine& line, std::size_t number) const;
    cmROStringT remark() const;

    std::shared_ptr<const CommitDetails> m_details;
    std::size_t m_file = 0;
    cmArray<std::size_t> m_starts;  ///< for each hunk the line with its header, and at the end how many lines there are
    ListWindow m_window;
    std::size_t m_shift = 0;  ///< columns
};
