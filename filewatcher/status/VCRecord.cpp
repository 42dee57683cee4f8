#include "filewatcher/status/VCRecord.h"

#include "common/cmStringCatHelper.h"

bool hasStatusToken(cmROStringT list, cmROStringT token)
{
    const cmStringT wrappedList = cmCat("|") + list + "|";
    const cmStringT wrappedToken = cmCat("|") + token + "|";
    return wrappedList.view().find(wrappedToken) != cmROStringT::npos;
}

bool addStatusToken(cmStringT& list, cmROStringT token)
{
    if (hasStatusToken(list, token))
        return false;
    if (!list.isEmpty())
        list += '|';
    list += token;
    return true;
}

TXVCRECORD readVCRecord(const tamarin::TMString& path)
{
    TXVCRECORD record;
    record.state = txVCStateUnknown;
    txVCGetRecord(path, record);
    return record;
}

bool markFile(const cmStringT& path, std::int32_t tool, cmROStringT token, cmStringT TXVCRECORD::*list)
{
    TXVCRECORD record = readVCRecord(path);
    record.tool = tool;
    const bool isNew = addStatusToken(record.*list, token);
    txVCSetRecord(tamarin::TMString(path), record);
    return isNew;
}
