#include "txhost/LogLabels.h"

#include "common/cmStringCatHelper.h"
#include "txhost/Console.h"
#include "txhost/TextWidth.h"

#include <algorithm>

namespace {

constexpr std::size_t leastName = 2;  ///< of a label that is shortened: a letter and the ellipsis

/// With its brackets and the blank behind it.
std::size_t labelWidth(const LogLabel& label)
{
    return textWidth(label.name) + 3;
}

}  // namespace

cmStringT bracketed(const LogLabel& label)
{
    return cmCat(label.brackets.substr(0, 1)) + label.name + label.brackets.substr(1);
}

cmArray<LogLabel> fittingLabels(const cmArray<LogLabel>& labels, std::size_t subjectWidth, std::size_t& columns,
                                cmROStringT ellipsis)
{
    std::size_t room = std::max(columns / 2, columns - std::min(columns, subjectWidth));
    const LogLabel more{ellipsis, "[]", console::grey};
    cmArray<LogLabel> shown;
    const auto show = [&](const LogLabel& label) {
        shown.push_back(label);
        columns -= labelWidth(label);
        room -= labelWidth(label);
    };
    for (std::size_t i = 0; i < labels.size(); ++i) {
        const std::size_t kept = i + 1 < labels.size() ? labelWidth(more) : 0;
        LogLabel label = labels[i];
        if (labelWidth(label) + kept <= room) {
            show(label);
            continue;
        }
        const std::size_t around = labelWidth({}) + kept;
        const bool isShortened = room >= around + leastName;
        if (isShortened) {
            label.name = shortened(label.name, room - around, ellipsis);
            show(label);
        }
        if ((kept > 0 || !isShortened) && labelWidth(more) <= room)
            show(more);
        break;
    }
    return shown;
}
