#pragma once

#include "common/cmArray.h"
#include "common/cmString.h"

#include <cstddef>

/// A branch or a tag at a commit.
struct LogLabel {
    cmStringT name;
    cmROStringT brackets = "[]";  ///< two characters of ASCII
    int colour = 0;
};

/// `label` in its brackets.
cmStringT bracketed(const LogLabel& label);
/// The labels as they are shown before a subject of `subjectWidth` columns in a line with room for `columns`, each with a blank
/// behind it: they get what the subject does not need, or half of the room. Those that do not fit are shortened, and "[…]" with
/// this ellipsis stands for what is left out. Reduces `columns` by what they take.
cmArray<LogLabel> fittingLabels(const cmArray<LogLabel>& labels, std::size_t subjectWidth, std::size_t& columns,
                                cmROStringT ellipsis);
