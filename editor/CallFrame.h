#pragma once

#include "editor/Editor.h"
#include "editor/MachineCall.h"
#include "editor/Prototype.h"
#include "editor/VariableStore.h"

/// The arguments of one running call, each in a variable. The frame creates a variable for every argument that is not one
/// already, and destroys these in its destructor. For the editor's thread.
class CallFrame {
public:
    CallFrame(VariableStore& variables, const cmArray<CallArgument>& arguments);
    ~CallFrame();
    CallFrame(const CallFrame&) = delete;
    CallFrame& operator=(const CallFrame&) = delete;

    std::int32_t argumentCount() const { return static_cast<std::int32_t>(m_arguments.size()); }
    /// The handle of argument `number`, counted from 1; 0 when there is none.
    TXHVAR argument(std::int32_t number) const;

    /// Converts the arguments to what `parameters` take; there must be at least as many arguments as parameters. The pointers in
    /// the result refer to the frame and are valid while it lives.
    cmArray<MachineArgument> marshal(const cmArray<ParameterKind>& parameters);
    /// Stores the strings that the function changed through TMStringByRef parameters in their variables. Call after the
    /// function has returned, with the same `parameters`.
    void writeBack(const cmArray<ParameterKind>& parameters);

private:
    struct Argument {
        TXHVAR variable = 0;
        bool isOwned = false;    ///< created, and to be destroyed, by the frame
        tamarin::TMString text;  ///< the string that a parameter of a text or string kind refers to
    };
    MachineArgument marshal(ParameterKind kind, Argument& argument);

    VariableStore& m_variables;
    cmArray<Argument> m_arguments;
};
