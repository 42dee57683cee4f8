#include "editor/EditorParts.h"
#include "txapi/txapi.h"

// The services for calls, properties, the browser tree and timers.

namespace {

constexpr std::int32_t succeeded = 0;
constexpr std::int32_t failed = -1;

/// Macro functions of this editor take no arguments, so `count` must be 0.
std::int32_t callMacro(EditorParts& editor, std::int32_t index, std::int32_t count)
{
    if (count != 0)
        return failed;
    const std::optional<cmStringT> result = editor.names.call(index);
    if (!result)
        return failed;
    editor.variables.setString(txLastResult, *result);
    return succeeded;
}

/// This editor knows every picture whose name ends with ".svg".
std::int32_t pictureIndex(EditorParts& editor, cmROStringT name)
{
    if (!name.ends_with(".svg"))
        return 0;
    const auto next = static_cast<std::int32_t>(editor.pictures.size()) + 1;
    return editor.pictures.try_emplace(name, next).first->second;
}

}  // namespace

std::int32_t txRegisterFunction(TXPSZ prototype, std::int32_t, std::int32_t, TXPFN function)
{
    return onEditorThread(__func__, [&](EditorParts& editor) {
        return prototype && editor.functions.add(prototype, function) ? succeeded : failed;
    });
}

std::int32_t txFeatureAvailable()
{
    return onEditorThread(__func__, [](EditorParts& editor) { return editor.featureAvailable ? 1 : 0; });
}

std::int32_t txFindName(TXPSZ name, std::int32_t kind)
{
    return onEditorThread(__func__, [&](EditorParts& editor) { return name ? editor.names.find(name, kind) : 0; });
}

std::int32_t txIsCallable(std::int32_t index)
{
    return onEditorThread(__func__, [&](EditorParts& editor) { return editor.names.isCallable(index) ? 1 : 0; });
}

std::int32_t txCallFunction(std::int32_t, std::int32_t index, std::int32_t count, const TXHVAR*)
{
    return onEditorThread(__func__, [&](EditorParts& editor) { return callMacro(editor, index, count); });
}

std::int32_t txArgumentCount()
{
    return onEditorThread(__func__, [](EditorParts& editor) { return editor.functions.argumentCount(); });
}

TXHVAR txArgument(std::int32_t number)
{
    return onEditorThread(__func__, [&](EditorParts& editor) { return editor.functions.argument(number); });
}

void txSetCallback(std::int32_t slot, TXPFN function)
{
    onEditorThread(__func__, [&](EditorParts& editor) { editor.callbacks[slot] = function; });
}

TXHVAR txProperty(std::int32_t number)
{
    return onEditorThread(__func__, [&](EditorParts& editor) { return editor.properties.find(number); });
}

void txGetStringProperty(std::int32_t number, cmStringT& value)
{
    value = onEditorThread(
        __func__, [&](EditorParts& editor) { return editor.variables.getString(editor.properties.find(number)).value_or(""); });
}

void txSetStringProperty(std::int32_t number, const cmStringT& value)
{
    onEditorThread(__func__, [&](EditorParts& editor) { editor.variables.setString(editor.properties.obtain(number), value); });
}

std::int32_t txGetIntProperty(std::int32_t number)
{
    return onEditorThread(__func__, [&](EditorParts& editor) { return editor.variables.getInt(editor.properties.find(number)); });
}

void txSetIntProperty(std::int32_t number, std::int32_t value)
{
    onEditorThread(__func__, [&](EditorParts& editor) { editor.variables.setInt(editor.properties.obtain(number), value); });
}

void txTreeClear()
{
    onEditorThread(__func__, [](EditorParts& editor) { editor.tree.clear(); });
}

void txTreeSetModel(void* model)
{
    onEditorThread(__func__, [&](EditorParts& editor) { editor.treeModel = model; });
}

std::int32_t txTreeRowCount()
{
    return onEditorThread(__func__, [](EditorParts& editor) { return editor.tree.rowCount(); });
}

std::int32_t txTreeAdd(std::int32_t after, const cmStringT& caption, std::int32_t flags, TXHVAR userData)
{
    return onEditorThread(__func__, [&](EditorParts& editor) { return editor.tree.add(after, caption, flags, userData); });
}

void txTreeSetDate(std::int32_t node, std::int32_t column, const TXDATETIME& date)
{
    onEditorThread(__func__, [&](EditorParts& editor) { editor.tree.setDate(node, column, date); });
}

std::int32_t txFindPicture(TXPSZ name)
{
    return onEditorThread(__func__, [&](EditorParts& editor) { return name ? pictureIndex(editor, name) : 0; });
}

std::int32_t txSetTimer(std::int32_t ms, void (*routine)())
{
    return onEditorThread(__func__, [&](EditorParts& editor) { return routine ? editor.loop.setTimer(ms, routine) : failed; });
}

void txKillTimer(std::int32_t timer)
{
    onEditorThread(__func__, [&](EditorParts& editor) { editor.loop.killTimer(timer); });
}
