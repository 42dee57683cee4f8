#pragma once

#include "common/cmArray.h"
#include "common/cmString.h"

#include <cstddef>

/// How a piece of text looks. The colour is an SGR number from 30 to 37 or 90 to 97, of the terminal's own 16; 0 is its default.
struct TextStyle {
    int colour = 0;
    bool isBold = false;
    bool isReversed = false;
    friend bool operator==(const TextStyle&, const TextStyle&) = default;
};

/// A piece of a line. The text holds nothing that a terminal obeys.
struct StyledText {
    cmStringT text;
    TextStyle style;
};

/// What a terminal shows: lines from the top, none wider than the picture, as many as it is high.
struct Picture {
    struct Size {
        std::size_t width = 80;
        std::size_t height = 24;
        friend bool operator==(const Size&, const Size&) = default;
    };

    Size size;
    cmArray<cmArray<StyledText>> lines;
    bool showsCursor = false;  ///< where text is typed in
    std::size_t cursorRow = 0;
    std::size_t cursorColumn = 0;
};
