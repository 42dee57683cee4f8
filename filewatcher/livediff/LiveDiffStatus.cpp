#include "filewatcher/livediff/LiveDiffStatus.h"

#include "common/cmDictionary.h"
#include "common/cmMutex.h"
#include "common/cmPath.h"

namespace {

cmMutex tableLock;
cmDictionary<cmStringT, std::int64_t> table CM_GUARDED_BY(tableLock);

}  // namespace

std::int64_t liveDiffStatus(cmROStringT cacheFile)
{
    const cmStringT key = cmFileNameKey(cacheFile);
    cmMutexLock hold(tableLock);
    const auto entry = table.find(key);
    return entry == table.end() ? 0 : entry->second;
}

void setLiveDiffStatus(cmROStringT cacheFile, std::int64_t status)
{
    const cmStringT key = cmFileNameKey(cacheFile);
    cmMutexLock hold(tableLock);
    table[key] = status;
}
