#include "filewatcher/RegisteredFunctions.h"
#include "filewatcher/StatusCodes.h"
#include "filewatcher/livediff/GetFileFromVCThreaded.h"
#include "filewatcher/livediff/LiveDiffCachePath.h"
#include "filewatcher/livediff/LiveDiffFetch.h"

namespace {

bool isBusy()
{
    GetFileFromVCThreaded* worker = GetFileFromVCThreaded::instance(false);
    return worker && worker->isRunning();
}

/// Returns the path of the cache file for `file` and creates its folder; null when the cache cannot hold it.
cmStringT prepareCacheFile(const tamarin::TMString& file)
{
    tamarin::TMString path(file);
    if (txPathKind(file) == txPathRelative)
        txAbsolute(file, tamarin::TMString(""), 1, path);
    tamarin::TMString directory;
    txDirectory(txDirectoryPrivate, directory);
    return prepareLiveDiffCacheFile(directory.getCMString(), path.getCMString());
}

}  // namespace

std::int32_t svcLiveDiffGetVCFile(TMStringConst origin, TMStringConst command, TMStringConst file, TMStringByRef cacheFile,
                                  TMStringConst workingDirectory)
{
    if (isBusy())
        return statusLiveDiffBusy;
    if (const TXHVAR permission = txProperty(txPropertyLiveDiffPermission)) {
        std::int32_t ignored = 0;
        if (const std::int32_t status = txHvarGetFlag(permission, &ignored))
            return status;
    }
    const cmStringT path = prepareCacheFile(file);
    cacheFile = path;
    if (path.isNull())
        return statusLiveDiffFailed;
    return GetFileFromVCThreaded::instance(true)->fetch(
        {origin.getCMString(), command.getCMString(), file.getCMString(), path, workingDirectory.getCMString()});
}

std::int32_t svcLiveDiffGetVCFileImmediate(TMStringConst origin, TMStringConst command, TMStringConst file,
                                           TMStringByRef cacheFile, TMStringConst workingDirectory)
{
    if (isBusy())
        return statusLiveDiffBusy;
    const cmStringT path = prepareCacheFile(file);
    cacheFile = path;
    if (path.isNull())
        return statusLiveDiffImmediateFailed;
    return fetchLiveDiffFile(
        {origin.getCMString(), command.getCMString(), file.getCMString(), path, workingDirectory.getCMString()}, {},
        statusLiveDiffImmediateFailed);
}

std::int32_t svcLiveDiffHaveVCFile(TMStringConst cacheFile)
{
    const TXHVAR reset = txProperty(txPropertyLiveDiffReset);
    if (reset && txHvarGetInt(reset) != 0) {
        setLiveDiffStatus(cacheFile.getCMString(), 0);
        return 0;
    }
    const std::int64_t status = liveDiffStatus(cacheFile.getCMString());
    return status == liveDiffReady || status < 0 ? static_cast<std::int32_t>(status) : 0;
}
