#pragma once

#include "editor/Editor.h"
#include "editor/MachineCall.h"
#include "editor/Prototype.h"
#include "editor/VariableStore.h"

/// The arguments of one running call, each in a variable. Those that the frame had to make go with it.
/// For the editor's thread.
class CallFrame {
public:
    CallFrame(VariableStore& variables, const cmArray<CallArgument>& arguments);
    ~CallFrame();
    CallFrame(const CallFrame&) = delete;
    CallFrame& operator=(const CallFrame&) = delete;

    std::int32_t argumentCount() const { return static_cast<std::int32_t>(m_arguments.size()); }
    /// Handle of argument `number`, counted from 1, or 0.
    TXHVAR argument(std::int32_t number) const;

    /// The arguments as `parameters`, of which there are no more than arguments, take them. The pointers are into the frame.
    cmArray<MachineArgument> marshal(const cmArray<ParameterKind>& parameters);
    /// Puts the texts that the function was given to change into the variables they came from.
    void writeBack(const cmArray<ParameterKind>& parameters);

private:
    struct Argument {
        TXHVAR variable = 0;
        bool made = false;       ///< by the frame
        tamarin::TMString text;  ///< what a parameter of a string kind refers to
    };
    MachineArgument marshal(ParameterKind kind, Argument& argument);

    VariableStore& m_variables;
    cmArray<Argument> m_arguments;
};
