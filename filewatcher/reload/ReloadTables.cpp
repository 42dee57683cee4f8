#include "filewatcher/RegisteredFunctions.h"
#include "filewatcher/reload/FileDateThread.h"

#include <utility>

namespace {

constexpr std::int32_t noMemory = 1;
constexpr std::int32_t timeIndex = 0;
constexpr std::int32_t readOnlyIndex = 1;

}  // namespace

std::int32_t getFastReloadInfoTable(TXHREFVAR fileNames, std::int32_t arg1, std::int32_t arg2, TXHREFVAR result,
                                    std::int32_t budgetMs)
{
    FileDateData* data = FileDateData::instance();
    if (!data)
        return noMemory;
    data->setSlowThreshold(budgetMs / 2);
    const std::int32_t count = txHvarArrayLength(fileNames);
    cmArray<FILE_DATE_THREAD_INPUT_INFO> requests;
    for (std::int32_t i = 0; i < count; ++i) {
        cmStringT name("");
        txHvarGetString(txHvarArrayElement(fileNames, i, 0), name);
        if (!name.isEmpty())
            requests.push_back({name, arg1, arg2});
    }
    if (!requests.empty() && data->enqueue(std::move(requests)))
        data->waitUntilDone(budgetMs);
    FILE_DATE_THREAD_OUTPUT_INFO found;
    while (count > 0 && data->takeResult(found)) {
        const TXHVAR element = txHvarHashElement(result, found.fileName.c_str(), txCreateMissing);
        txHvarSetInt64(txHvarArrayElement(element, timeIndex, txCreateMissing), found.item.modified);
        txHvarSetInt(txHvarArrayElement(element, readOnlyIndex, txCreateMissing), found.readOnlyFlag);
    }
    return 0;
}

std::int32_t getSlowReloadFiles(TXHREFVAR result)
{
    FileDateData* data = FileDateData::instance();
    if (!data)
        return noMemory;
    for (const cmStringT& name : data->slowFileNames())
        txHvarSetInt(txHvarHashElement(result, name.c_str(), txCreateMissing), 1);
    return 0;
}
