#pragma once

#include "editor/CallFrame.h"
#include "editor/Editor.h"
#include "editor/Prototype.h"

/// The registered functions, and the stack of calls that are running. For the editor's thread.
class FunctionTable {
public:
    explicit FunctionTable(VariableStore& variables) : m_variables(variables) {}

    /// Registers `function`. A function that is registered under the same name is replaced in its place. Returns false when the
    /// prototype cannot be parsed or `function` is null.
    bool add(cmROStringT prototype, TXPFN function);
    /// The prototypes' texts in the order of registration.
    cmArray<cmStringT> prototypes() const;
    /// Calls the function `name`. Calls may be nested. See Editor::call.
    CallResult call(cmROStringT name, const cmArray<CallArgument>& arguments);

    /// The arguments of the innermost running call; 0 when no call is running.
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
