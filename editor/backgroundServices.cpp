#include "editor/EditorParts.h"
#include "editor/Files.h"
#include "txapi/txapi.h"

// The services that any thread may call: version control, XML, files and the debug log.

namespace {

/// Lets `tell` see the observer on the editor's thread. It gets a copy, as the host may set another one meanwhile.
template <class Tell>
void notify(Tell tell)
{
    onAnyThread([&](EditorParts& editor) { editor.loop.post([&editor, tell] { tell(EditorObserver(editor.observer)); }); });
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
    notify([](const EditorObserver& observer) {
        if (observer.statusChanged)
            observer.statusChanged();
    });
}

void txVCPassBegin(const tamarin::TMString& path)
{
    notify([directory = path.getCMString()](const EditorObserver& observer) {
        if (observer.passBegan)
            observer.passBegan(directory);
    });
}

void txVCPassEnd(const tamarin::TMString& path, std::int32_t status)
{
    notify([directory = path.getCMString(), status](const EditorObserver& observer) {
        if (observer.passEnded)
            observer.passEnded(directory, status);
    });
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
    return onAnyThread([&](EditorParts& editor) {
        std::optional<cmStringT> found = editor.documents.attribute(document, node, name);
        if (found)
            value = std::move(*found);
        return found ? 1 : 0;
    });
}

void txXMLClose(std::int32_t document)
{
    onAnyThread([&](EditorParts& editor) { editor.documents.close(document); });
}

std::int32_t txPathKind(const tamarin::TMString& path)
{
    return static_cast<std::int32_t>(pathKind(path.getCMString()));
}

void txAbsolute(const tamarin::TMString& path, const tamarin::TMString& directory, std::int32_t normalise,
                tamarin::TMString& absolute)
{
    absolute = absolutePath(path.getCMString(), directory.getCMString(), normalise != 0);
}

std::int32_t txFileSupportsGetFileTime(const tamarin::TMString& path)
{
    return isUrl(path.getCMString()) ? 0 : 1;
}

void txDebugLog(TXPSZ line)
{
    onAnyThread([&](EditorParts& editor) { editor.log.add(line ? line : ""); });
}
