#include "txhost/Failure.h"

#include "common/cmStringCatHelper.h"

Failure failureOf(std::int32_t status, const cmStringT& reason, const cmStringT& path, cmROStringT tool)
{
    return {status, reason.isNull() ? meaningOfStatus(status) : reason, path, tool};
}

cmStringT meaningOfStatus(std::int32_t status)
{
    switch (status) {
    case -1: return "the tool could not answer, or had nothing to tell (--debug tells why)";
    case -2: return "the editor names no executable for the tool";
    case -12: return "memory ran out";
    case -2173: return "this edition of the editor lacks the feature";
    case -6657: return "the tool wrote more than the limit (--max-output); its file status is switched off";
    case -102621: return "stopped";
    case -102646: return "the tool could not be started (--debug tells why)";
    case -102696: return "a pipe failed, or the tool was killed (--debug tells why)";
    case -104360: return "another revision is being fetched";
    case -104357:
    case -104370: return "the committed revision could not be fetched or stored (--debug tells why)";
    case -104399: return "no Git repository is loaded";
    default: return {};
    }
}

cmStringT failureText(const Failure& failure)
{
    cmStringT text("");
    for (const cmROStringT about : {failure.path.view(), failure.tool}) {
        if (!about.empty())
            text += cmStringT(cmCat(about) + ": ");
    }
    if (failure.code < 0 && failure.code != Failure::stopped)
        text += cmStringT(cmCat(std::to_string(failure.code)) + ", ");
    text += failure.message;
    return text;
}
