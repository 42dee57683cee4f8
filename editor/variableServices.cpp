#include "editor/EditorParts.h"
#include "txapi/txapi.h"

// The services for variables.

namespace {

std::int32_t readFlag(const VariableStore& variables, TXHVAR variable, std::int32_t* flag)
{
    if (!flag || !variables.isValid(variable))
        return -1;
    *flag = variables.getInt(variable) != 0 ? 1 : 0;
    return 0;
}

}  // namespace

TXHVAR txVariable(std::int32_t index)
{
    return onEditorThread(__func__, [&](EditorParts& editor) { return editor.names.variable(index); });
}

TXHVAR txHvarAlloc()
{
    return onEditorThread(__func__, [](EditorParts& editor) { return editor.variables.createForCaller(); });
}

void txHvarFree(TXHVAR variable)
{
    onEditorThread(__func__, [&](EditorParts& editor) { editor.variables.freeForCaller(variable); });
}

std::int32_t txHvarGetInt(TXHVAR variable)
{
    return onEditorThread(__func__, [&](EditorParts& editor) { return editor.variables.getInt(variable); });
}

void txHvarSetInt(TXHVAR variable, std::int32_t value)
{
    onEditorThread(__func__, [&](EditorParts& editor) { editor.variables.setInt(variable, value); });
}

void txHvarSetInt64(TXHVAR variable, std::int64_t value)
{
    onEditorThread(__func__, [&](EditorParts& editor) { editor.variables.setInt(variable, value); });
}

std::int32_t txHvarGetString(TXHVAR variable, cmStringT& value)
{
    return onEditorThread(__func__, [&](EditorParts& editor) {
        std::optional<cmStringT> text = editor.variables.getString(variable);
        if (text)
            value = std::move(*text);
        return text ? 1 : 0;
    });
}

void txHvarSetString(TXHVAR variable, const cmStringT& value)
{
    onEditorThread(__func__, [&](EditorParts& editor) { editor.variables.setString(variable, value); });
}

std::int32_t txHvarGetFlag(TXHVAR variable, std::int32_t* flag)
{
    return onEditorThread(__func__, [&](EditorParts& editor) { return readFlag(editor.variables, variable, flag); });
}

std::int32_t txHvarArrayLength(TXHVAR array)
{
    return onEditorThread(__func__, [&](EditorParts& editor) { return editor.variables.arrayLength(array); });
}

TXHVAR txHvarArrayElement(TXHVAR array, std::int32_t index, std::int32_t create)
{
    return onEditorThread(
        __func__, [&](EditorParts& editor) { return editor.variables.arrayElement(array, index, create == txCreateMissing); });
}

TXHVAR txHvarHashElement(TXHVAR table, TXPSZ key, std::int32_t create)
{
    return onEditorThread(__func__, [&](EditorParts& editor) {
        return key ? editor.variables.hashElement(table, key, create == txCreateMissing) : 0;
    });
}

TXHVAR txHvarNextElement(tamarin::TMIterator& iterator)
{
    return onEditorThread(__func__, [&](EditorParts& editor) { return editor.variables.nextElement(iterator); });
}

std::int32_t txHvarInitInstance(TXHVAR variable, TXPSZ className)
{
    return onEditorThread(
        __func__, [&](EditorParts& editor) { return className && editor.variables.initInstance(variable, className) ? 0 : -1; });
}

TXHVAR txHvarField(TXHVAR instance, TXPSZ field)
{
    return onEditorThread(__func__, [&](EditorParts& editor) { return field ? editor.variables.field(instance, field) : 0; });
}
