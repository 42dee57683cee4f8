#pragma once

#include "editor/Editor.h"
#include "txapi/txapi.h"

/// A variable of the editor that a call reads or fills; it is freed with the object. For the editor's thread.
class CallVariable {
public:
    CallVariable() : m_handle(txHvarAlloc()) {}
    ~CallVariable() { txHvarFree(m_handle); }
    CallVariable(const CallVariable&) = delete;
    CallVariable& operator=(const CallVariable&) = delete;

    TXHVAR handle() const { return m_handle; }
    CallArgument argument() const { return CallArgument::variable(m_handle); }

private:
    TXHVAR m_handle;
};
