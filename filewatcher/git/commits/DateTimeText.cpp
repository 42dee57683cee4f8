#include "filewatcher/git/commits/DateTimeText.h"

#include <array>
#include <cstdio>

cmStringT dateTimeText(const GitDateTime& time)
{
    if (!time.isSet())
        return {};
    const cmDateTime parts = time.unpacked();
    std::array<char, 80> text{};
    std::snprintf(text.data(), text.size(), "%04d-%02d-%02d %02d:%02d:%02d", static_cast<int>(parts.year),
                  static_cast<int>(parts.month), static_cast<int>(parts.day), static_cast<int>(parts.hour),
                  static_cast<int>(parts.minute), static_cast<int>(parts.second));
    return text.data();
}
