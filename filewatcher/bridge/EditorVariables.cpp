#include "filewatcher/bridge/EditorVariables.h"

TXHVAR madeElement(TXHVAR array, std::int32_t index)
{
    return array ? txHvarArrayElement(array, index, txCreateMissing) : 0;
}

TXHVAR madeElement(TXHVAR table, TXPSZ key)
{
    return table ? txHvarHashElement(table, key, txCreateMissing) : 0;
}

void storeText(TXHVAR variable, const cmStringT& text)
{
    if (variable)
        txHvarSetString(variable, text);
}

void storeInt(TXHVAR variable, std::int32_t value)
{
    if (variable)
        txHvarSetInt(variable, value);
}

void shortenEditorArray(TXHVAR array, std::size_t length)
{
    if (array && static_cast<std::size_t>(txHvarArrayLength(array)) > length)
        txHvarSetString(array, "");  // no service removes elements; a string becomes an array again with its first element
}

void storeTexts(TXHVAR array, const cmArray<cmStringT>& texts)
{
    shortenEditorArray(array, texts.size());
    for (std::size_t i = 0; i < texts.size(); ++i)
        storeText(madeElement(array, static_cast<std::int32_t>(i)), texts[i]);
}
