#pragma once

#include "editor/BrowserTree.h"
#include "editor/DebugLog.h"
#include "editor/Editor.h"
#include "editor/EventLoop.h"
#include "editor/FunctionTable.h"
#include "editor/NameTable.h"
#include "editor/PropertyTable.h"
#include "editor/QueryError.h"
#include "editor/VCRecords.h"
#include "editor/VariableStore.h"
#include "editor/XMLDocuments.h"

#include <thread>

/// The state of the Editor. Members are for the editor's thread unless their class allows any thread.
struct EditorParts {
    const std::thread::id thread = std::this_thread::get_id();

    VariableStore variables;
    NameTable names{variables};
    PropertyTable properties{variables};
    FunctionTable functions{variables};
    BrowserTree tree{variables};

    bool featureAvailable = true;
    cmStringT directory;  ///< folder for private data; null until the host sets it
    cmDictionary<std::int32_t, TXPFN> callbacks;
    cmDictionary<cmStringT, std::int32_t> pictures;  ///< index of each picture that was asked for
    void* treeModel = nullptr;
    EditorObserver observer;

    VCRecords records;
    XMLDocuments documents;
    QueryError queryError;
    DebugLog log;
    EventLoop loop;
};

/// The parts of the existing Editor; null when there is none. Any thread.
EditorParts* currentEditorParts();
/// Aborts the program when called from any thread but the editor's. The message on standard error names `caller`.
void requireEditorThread(const EditorParts& parts, const char* caller);

/// Calls `body` with the parts of the existing Editor and returns its result; a default value when there is no Editor. For
/// services of any thread.
template <class Body>
auto onAnyThread(Body body)
{
    EditorParts* parts = currentEditorParts();
    return parts ? body(*parts) : decltype(body(*parts))();
}

/// The same for services of the editor's thread; aborts the program when called from another one. `caller` is the service's name.
template <class Body>
auto onEditorThread(const char* caller, Body body)
{
    return onAnyThread([&](EditorParts& parts) {
        requireEditorThread(parts, caller);
        return body(parts);
    });
}
