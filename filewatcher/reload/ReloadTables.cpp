#include "filewatcher/RegisteredFunctions.h"
#include "filewatcher/reload/FileDateData.h"

#include <utility>

namespace {

constexpr std::int32_t notPossible = 1;
constexpr std::int32_t timeIndex = 0;
constexpr std::int32_t readOnlyIndex = 1;

/// Adds a result to the editor's table. What the editor has no handle for is skipped.
void addResult(TXHVAR table, const FILE_DATE_THREAD_OUTPUT_INFO& found)
{
    const TXHVAR element = txHvarHashElement(table, found.fileName.c_str(), txCreateMissing);
    if (!element)
        return;
    if (const TXHVAR time = txHvarArrayElement(element, timeIndex, txCreateMissing))
        txHvarSetInt64(time, found.item.modified);
    if (const TXHVAR readOnly = txHvarArrayElement(element, readOnlyIndex, txCreateMissing))
        txHvarSetInt(readOnly, found.readOnlyFlag);
}

}  // namespace

std::int32_t getFastReloadInfoTable(TXHREFVAR fileNames, std::int32_t arg1, std::int32_t arg2, TXHREFVAR result,
                                    std::int32_t budgetMs)
{
    FileDateData* data = FileDateData::instance();
    if (!data)
        return notPossible;
    data->setSlowThreshold(budgetMs / 2);
    const std::int32_t count = fileNames ? txHvarArrayLength(fileNames) : 0;
    cmArray<FILE_DATE_THREAD_INPUT_INFO> requests;
    for (std::int32_t i = 0; i < count; ++i) {
        cmStringT name("");
        if (const TXHVAR element = txHvarArrayElement(fileNames, i, 0))
            txHvarGetString(element, name);
        if (!name.isEmpty())
            requests.push_back({name, arg1, arg2});
    }
    if (!requests.empty() && !data->startReader())
        return notPossible;
    if (!requests.empty() && data->enqueue(std::move(requests)))
        data->waitUntilDone(budgetMs);
    if (count > 0) {
        for (const FILE_DATE_THREAD_OUTPUT_INFO& found : data->takeResults())
            addResult(result, found);
    }
    return 0;
}

std::int32_t getSlowReloadFiles(TXHREFVAR result)
{
    FileDateData* data = FileDateData::instance();
    if (!data)
        return notPossible;
    for (const cmStringT& name : result ? data->slowFileNames() : cmArray<cmStringT>()) {
        if (const TXHVAR element = txHvarHashElement(result, name.c_str(), txCreateMissing))
            txHvarSetInt(element, 1);
    }
    return 0;
}
