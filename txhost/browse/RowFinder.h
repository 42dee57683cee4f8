#pragma once

#include "txhost/browse/BrowseData.h"

#include <optional>

/// Asks for one row of the history at a time.
class RowFinder {
public:
    /// What is done with the row.
    enum class Purpose {
        keep,   ///< the selected commit is in another row now
        match,  ///< the user looks for text
        go,     ///< the user goes to another commit
    };

    /// In place of what is asked for.
    void start(Purpose purpose, SearchKind kind, cmStringT text, std::int32_t from = 0, bool backwards = false);
    void cancel() { m_search.reset(); }
    /// Asks again: the rows have become other ones.
    void restart();

    /// What is asked for; nothing when it has been answered.
    const std::optional<RowSearch>& search() const { return m_search; }
    Purpose purpose() const { return m_purpose; }
    /// Returns whether `found` is the answer to what is asked for, which is nothing from then on.
    bool take(const RowFound& found);

private:
    std::optional<RowSearch> m_search;
    Purpose m_purpose = Purpose::go;
    std::uint32_t m_number = 0;
};
