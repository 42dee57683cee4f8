#include "filewatcher/bridge/DebugLog.h"

#include "common/cmStringCatHelper.h"
#include "txapi/txapi.h"

#include <string>

void debugLog(cmROStringT function, int line, cmROStringT message)
{
    const std::string number = std::to_string(line);
    const cmStringT text = cmCat(function) + "(" + number + "): " + message;
    txDebugLog(text.c_str());
}
