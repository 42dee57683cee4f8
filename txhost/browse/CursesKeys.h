#pragma once

#include "txhost/browse/Key.h"

#include <chrono>
#include <cwchar>
#include <optional>

/// POSIX only. Makes keys of what ncurses reads besides characters. For the thread that reads.
class CursesKeys {
public:
    /// The key with this code of ncurses, or what the mouse has done; nothing for what the program does not use.
    std::optional<Key> functionKey(wint_t code);

private:
    std::optional<Key> mouseKey();

    Key m_lastClick;
    std::chrono::steady_clock::time_point m_clickTime;
};
