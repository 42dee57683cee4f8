#pragma once

#include "txhost/browse/BrowseData.h"
#include "txhost/browse/StyledLine.h"

/// What the last line tells of what is shown.
struct StatusFacts {
    cmStringT repository;          ///< its name
    std::int32_t commitCount = 0;  ///< of the history
    cmStringT title;               ///< of the list, when it is not the history
    cmStringT message;             ///< what the last key has brought; empty: nothing
    bool isBadNews = false;        ///< the message
    bool isSearching = false;      ///< for the commit that the user goes to
    bool isReloading = false;      ///< the state belongs to an earlier load
    cmStringT filter;              ///< that the user wants
    cmStringT filterRemark;        ///< what has become of it
    std::int32_t row = 0;          ///< of the cursor in the list
    std::int32_t rowCount = 0;     ///< of the list
};

/// Draws "12,345 commits · 35,000/s · loading …  filter: TEXT      ROW/ROWS". What has gone wrong comes first.
void drawStatus(StyledLine& line, const HistoryState& state, const StatusFacts& facts);
