#include "filewatcher/bridge/EditorSettings.h"

TXHVAR findEditorVariable(TXPSZ name)
{
    const std::int32_t index = txFindName(name, txKindVariable);
    return index ? txVariable(index) : 0;
}

std::int32_t editorSetting(TXPSZ name, std::int32_t missing)
{
    const TXHVAR variable = findEditorVariable(name);
    return variable ? txHvarGetInt(variable) : missing;
}

cmStringT callEditorMacro(TXPSZ name)
{
    cmStringT result("");
    const std::int32_t index = txFindName(name, txKindFunction);
    if (index && txIsCallable(index) && txCallFunction(0, index, 0, nullptr) == 0)
        txHvarGetString(txLastResult, result);
    return result;
}
