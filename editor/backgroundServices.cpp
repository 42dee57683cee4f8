#include "editor/EditorParts.h"
#include "txapi/txapi.h"

// The services for version control, XML and the debug log. Any thread may call them.

namespace {

/// Calls `call` with the observer, on the editor's thread. `call` gets a copy, because the observer may set another one.
template <class Call>
void notifyObserver(Call call)
{
    onAnyThread([&](EditorParts& editor) { editor.loop.post([&editor, call] { call(EditorObserver(editor.observer)); }); });
}

}  // namespace

std::int32_t txVCGetRecord(const tamarin::TMString& path, TXVCRECORD& record)
{
    return onAnyThread([&](EditorParts& editor) {
        std::optional<TXVCRECORD> found = editor.records.find(path.getCMString());
        if (found)
            record = std::move(*found);
        return found ? 1 : 0;
    });
}

void txVCSetRecord(const tamarin::TMString& path, const TXVCRECORD& record)
{
    onAnyThread([&](EditorParts& editor) { editor.records.write(path.getCMString(), record); });
}

void txVCStatusChanged()
{
    notifyObserver([](const EditorObserver& observer) {
        if (observer.statusChanged)
            observer.statusChanged();
    });
}

void txVCPassBegin(const tamarin::TMString& path)
{
    notifyObserver([directory = path.getCMString()](const EditorObserver& observer) {
        if (observer.passBegan)
            observer.passBegan(directory);
    });
}

void txVCPassError(const tamarin::TMString& path, const cmStringT& reason)
{
    notifyObserver([directory = path.getCMString(), reason](const EditorObserver& observer) {
        if (observer.passFailed)
            observer.passFailed(directory, reason);
    });
}

void txVCPassEnd(const tamarin::TMString& path, std::int32_t status)
{
    notifyObserver([directory = path.getCMString(), status](const EditorObserver& observer) {
        if (observer.passEnded)
            observer.passEnded(directory, status);
    });
}

void txGitLoadEnd(const tamarin::TMString& path, std::int32_t part, std::int32_t status, const tamarin::TMString& message)
{
    notifyObserver([repository = path.getCMString(), part, status, text = message.getCMString()](const EditorObserver& observer) {
        if (observer.gitLoadEnded)
            observer.gitLoadEnded(repository, part, status, text);
    });
}

void txQueryError(const cmStringT& reason)
{
    onAnyThread([&](EditorParts& editor) { editor.queryError.set(reason); });
}

std::int32_t txXMLLoadText(const cmStringT& text)
{
    return onAnyThread([&](EditorParts& editor) { return editor.documents.load(text); });
}

std::int32_t txXMLRoot(std::int32_t document)
{
    return onAnyThread([&](EditorParts& editor) { return editor.documents.root(document); });
}

std::int32_t txXMLSelect(std::int32_t document, TXPSZ path, cmArray<std::int32_t>& nodes)
{
    return onAnyThread([&](EditorParts& editor) { return editor.documents.select(document, path, nodes); });
}

std::int32_t txXMLChild(std::int32_t document, std::int32_t node, TXPSZ name)
{
    return onAnyThread([&](EditorParts& editor) { return editor.documents.child(document, node, name); });
}

std::int32_t txXMLCFGGetAttributeCMString(std::int32_t document, std::int32_t node, TXPSZ name, cmStringT& value)
{
    value.clear();
    return onAnyThread([&](EditorParts& editor) { return editor.documents.attribute(document, node, name, value) ? 1 : 0; });
}

void txXMLClose(std::int32_t document)
{
    onAnyThread([&](EditorParts& editor) { editor.documents.close(document); });
}

void txDebugLog(TXPSZ line)
{
    onAnyThread([&](EditorParts& editor) { editor.log.add(line ? line : ""); });
}
