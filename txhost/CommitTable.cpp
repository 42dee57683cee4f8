#include "txhost/CommitTable.h"

#include "txapi/txapi.h"

#include <set>

namespace {

constexpr const char* texts[] = {"hash", "parentHash", "authorName", "authorEmail", "committerDate", "comment"};
constexpr const char* lists[] = {"otherParents", "longComment", "modifiedFiles", "modifiedFilesByParent", "stagedFiles"};

void makeArray(Json& list)
{
    if (!list.is_array())
        list = Json::array();
}

}  // namespace

void addCommitKeys(TXHVAR table)
{
    for (const char* key : texts)
        txHvarSetString(txHvarHashElement(table, key, txCreateMissing), "");
    for (const char* key : lists)
        txHvarHashElement(table, key, txCreateMissing);
}

void completeCommitLists(Json& table)
{
    for (const char* key : lists)
        makeArray(table[key]);
    for (Json& files : table["modifiedFilesByParent"])
        makeArray(files);
}

cmArray<cmStringT> eachOnce(const cmArray<cmStringT>& names)
{
    std::set<cmStringT> seen;
    cmArray<cmStringT> unique;
    for (const cmStringT& name : names) {
        if (seen.insert(name).second)
            unique.push_back(name);
    }
    return unique;
}
