#pragma once

#include "editor/BrowserTree.h"
#include "editor/DebugLog.h"
#include "editor/Editor.h"
#include "editor/EventLoop.h"
#include "editor/FunctionTable.h"
#include "editor/NameTable.h"
#include "editor/PropertyTable.h"
#include "editor/VCRecords.h"
#include "editor/VariableStore.h"
#include "editor/XMLDocuments.h"

#include <thread>

/// What the editor consists of. Unless their classes say otherwise the members are for the editor's thread.
struct EditorParts {
    const std::thread::id thread = std::this_thread::get_id();

    VariableStore variables;
    NameTable names{variables};
    PropertyTable properties{variables};
    FunctionTable functions{variables};
    BrowserTree tree{variables};

    bool featureAvailable = true;
    cmStringT directory;  ///< null until the host sets it
    cmDictionary<std::int32_t, TXPFN> callbacks;
    cmDictionary<cmStringT, std::int32_t> pictures;  ///< the index of each that was asked for
    void* treeModel = nullptr;
    EditorObserver observer;

    VCRecords records;
    XMLDocuments documents;
    DebugLog log;
    EventLoop loop;
};

/// The parts of the Editor there is; null when there is none. Any thread.
EditorParts* currentEditorParts();
/// Aborts the program with a message when it is called off the editor's thread; `caller` is the name in the message.
void requireEditorThread(const EditorParts& parts, const char* caller);

/// What `body` makes of the editor's parts; 0 or empty when there is no Editor. Any thread.
template <class Body>
auto onAnyThread(Body body)
{
    EditorParts* parts = currentEditorParts();
    return parts ? body(*parts) : decltype(body(*parts))();
}

/// The same for services of the editor's thread.
template <class Body>
auto onEditorThread(const char* caller, Body body)
{
    return onAnyThread([&](EditorParts& parts) {
        requireEditorThread(parts, caller);
        return body(parts);
    });
}
