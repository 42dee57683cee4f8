#include "editor/Editor.h"

#include "editor/EditorParts.h"

#include <atomic>
#include <cstdio>
#include <cstdlib>

namespace {

std::atomic<EditorParts*> currentParts{nullptr};

}  // namespace

EditorParts* currentEditorParts()
{
    return currentParts.load();
}

void requireEditorThread(const EditorParts& parts, const char* caller)
{
    if (parts.thread == std::this_thread::get_id())
        return;
    std::fprintf(stderr, "%s called off the editor's thread\n", caller);
    std::abort();
}

Editor::Editor() : m_parts(std::make_unique<EditorParts>())
{
    EditorParts* none = nullptr;
    if (!currentParts.compare_exchange_strong(none, m_parts.get())) {
        std::fprintf(stderr, "there is an Editor already\n");
        std::abort();
    }
}

Editor::~Editor()
{
    requireEditorThread(*m_parts, "~Editor");
    currentParts.store(nullptr);
}

void Editor::setFeatureAvailable(bool available)
{
    requireEditorThread(*m_parts, __func__);
    m_parts->featureAvailable = available;
}

void Editor::setSetting(cmROStringT name, std::int32_t value)
{
    requireEditorThread(*m_parts, __func__);
    m_parts->names.setVariable(name, value);
}

std::optional<std::int32_t> Editor::setting(cmROStringT name) const
{
    requireEditorThread(*m_parts, __func__);
    const TXHVAR variable = m_parts->names.variable(m_parts->names.find(name, txKindVariable));
    return variable == 0 ? std::nullopt : std::optional(m_parts->variables.getInt(variable));
}

void Editor::removeSetting(cmROStringT name)
{
    requireEditorThread(*m_parts, __func__);
    m_parts->names.removeVariable(name);
}

void Editor::defineMacro(cmROStringT name, std::function<cmStringT()> body)
{
    requireEditorThread(*m_parts, __func__);
    m_parts->names.defineMacro(name, std::move(body));
}

void Editor::defineClass(cmROStringT name, const cmArray<cmStringT>& fields)
{
    requireEditorThread(*m_parts, __func__);
    m_parts->variables.defineClass(name, fields);
}

void Editor::setProperty(std::int32_t number, const cmStringT& value)
{
    requireEditorThread(*m_parts, __func__);
    m_parts->variables.setString(m_parts->properties.obtain(number), value);
}

void Editor::setProperty(std::int32_t number, std::int32_t value)
{
    requireEditorThread(*m_parts, __func__);
    m_parts->variables.setInt(m_parts->properties.obtain(number), value);
}

void Editor::removeProperty(std::int32_t number)
{
    requireEditorThread(*m_parts, __func__);
    m_parts->properties.remove(number);
}

void Editor::setDirectory(const cmStringT& directory)
{
    requireEditorThread(*m_parts, __func__);
    m_parts->directory = directory;
}

cmArray<cmStringT> Editor::prototypes() const
{
    requireEditorThread(*m_parts, __func__);
    return m_parts->functions.prototypes();
}

CallResult Editor::call(cmROStringT name, const cmArray<CallArgument>& arguments)
{
    requireEditorThread(*m_parts, __func__);
    return m_parts->functions.call(name, arguments);
}

const VariableValue* Editor::value(TXHVAR variable) const
{
    requireEditorThread(*m_parts, __func__);
    return m_parts->variables.value(variable);
}

TXPFN Editor::callback(std::int32_t slot) const
{
    requireEditorThread(*m_parts, __func__);
    const auto found = m_parts->callbacks.find(slot);
    return found == m_parts->callbacks.end() ? nullptr : found->second;
}

void* Editor::treeModel() const
{
    requireEditorThread(*m_parts, __func__);
    return m_parts->treeModel;
}

std::optional<TXVCRECORD> Editor::record(cmROStringT path) const
{
    return m_parts->records.find(path);
}

cmArray<std::pair<cmStringT, TXVCRECORD>> Editor::records() const
{
    return m_parts->records.all();
}

cmArray<std::pair<cmStringT, TXVCRECORD>> Editor::takeChangedRecords()
{
    return m_parts->records.takeChanged();
}

void Editor::clearRecords(std::int32_t tool)
{
    m_parts->records.clear(tool);
}

void Editor::keepTreeRows(bool kept)
{
    requireEditorThread(*m_parts, __func__);
    m_parts->tree.keepRows(kept);
}

const std::deque<TreeRow>& Editor::tree() const
{
    requireEditorThread(*m_parts, __func__);
    return m_parts->tree.rows();
}

cmStringT Editor::takeQueryError()
{
    return m_parts->queryError.take();
}

std::size_t Editor::openDocuments() const
{
    return m_parts->documents.count();
}

std::size_t Editor::openVariables() const
{
    requireEditorThread(*m_parts, __func__);
    return m_parts->variables.count();
}

void Editor::setObserver(EditorObserver observer)
{
    requireEditorThread(*m_parts, __func__);
    m_parts->observer = std::move(observer);
}

void Editor::setDebugSink(std::function<void(cmROStringT line)> sink)
{
    requireEditorThread(*m_parts, __func__);
    m_parts->log.setSink(std::move(sink));
}

void Editor::post(std::function<void()> task)
{
    m_parts->loop.post(std::move(task));
}

bool Editor::runUntil(const std::function<bool()>& done, std::int32_t timeoutMs)
{
    requireEditorThread(*m_parts, __func__);
    return m_parts->loop.runUntil(done, timeoutMs);
}
