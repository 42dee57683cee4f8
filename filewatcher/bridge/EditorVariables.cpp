#include "filewatcher/bridge/EditorVariables.h"

void shortenEditorArray(TXHVAR array, std::size_t length)
{
    if (static_cast<std::size_t>(txHvarArrayLength(array)) > length)
        txHvarSetString(array, "");  // no service removes elements; a string becomes an array again with its first element
}

void storeTexts(TXHVAR array, const cmArray<cmStringT>& texts)
{
    shortenEditorArray(array, texts.size());
    for (std::size_t i = 0; i < texts.size(); ++i)
        txHvarSetString(txHvarArrayElement(array, static_cast<std::int32_t>(i), txCreateMissing), texts[i]);
}
