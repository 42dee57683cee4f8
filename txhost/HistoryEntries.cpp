#include "txhost/HistoryEntries.h"

#include <cstddef>
#include <cstdint>

cmArray<const Json*> historyEntries(const Json& tree)
{
    cmArray<const Json*> children;
    for (auto index = tree.at(0).at("firstChildIndex").get<std::int64_t>(); index > 0;
         index = children.back()->at("rsibIndex").get<std::int64_t>())
        children.push_back(&tree.at(static_cast<std::size_t>(index)));
    return children;
}

std::string historyField(const Json& entry, const char* name)
{
    constexpr const char* missing = "(null)";  // what the module writes into a field without a value
    const std::string text = entry.at(name).get<std::string>();
    return text == missing ? std::string() : text;
}
