#include "common/cmDateTime.h"

#include <array>
#include <cstdio>

cmStringT cmDateTimeText(const cmDateTime& date)
{
    std::array<char, 80> text{};
    std::snprintf(text.data(), text.size(), "%04d-%02d-%02d %02d:%02d:%02d", static_cast<int>(date.year),
                  static_cast<int>(date.month), static_cast<int>(date.day), static_cast<int>(date.hour),
                  static_cast<int>(date.minute), static_cast<int>(date.second));
    return text.data();
}
