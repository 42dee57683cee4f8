#pragma once

#include "editor/CallFrame.h"
#include "editor/Editor.h"
#include "editor/Prototype.h"

/// The functions that the module registered, and the calls of them that run now. For the editor's thread.
class FunctionTable {
public:
    explicit FunctionTable(VariableStore& variables) : m_variables(variables) {}

    /// A name that is registered again gets the new function, in the old place. False when the prototype cannot be read
    /// or there is no function.
    bool add(cmROStringT prototype, TXPFN function);
    /// As they were registered.
    cmArray<cmStringT> prototypes() const;
    CallResult call(cmROStringT name, const cmArray<CallArgument>& arguments);

    /// Of the innermost call that runs; 0 when there is none.
    std::int32_t argumentCount() const;
    TXHVAR argument(std::int32_t number) const;

private:
    struct Function {
        cmStringT text;
        Prototype prototype;
        TXPFN address;
    };
    const Function* find(cmROStringT name) const;
    CallResult run(const Function& function, const cmArray<CallArgument>& arguments);

    VariableStore& m_variables;
    cmArray<Function> m_functions;
    cmArray<const CallFrame*> m_running;
};
