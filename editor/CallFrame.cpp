#include "editor/CallFrame.h"

CallFrame::CallFrame(VariableStore& variables, const cmArray<CallArgument>& arguments)
    : m_variables(variables), m_arguments(arguments.size())
{
    for (std::size_t i = 0; i < arguments.size(); ++i) {
        const CallArgument& given = arguments[i];
        Argument& argument = m_arguments[i];
        argument.isOwned = !given.isVariable();
        argument.variable = argument.isOwned ? m_variables.create() : given.handle();
        if (given.isNumber())
            m_variables.setInt(argument.variable, given.number());
        else if (argument.isOwned)
            m_variables.setString(argument.variable, given.text());
    }
}

CallFrame::~CallFrame()
{
    for (const Argument& argument : m_arguments)
        if (argument.isOwned)
            m_variables.destroy(argument.variable);
}

TXHVAR CallFrame::argument(std::int32_t number) const
{
    return number >= 1 && number <= argumentCount() ? m_arguments[static_cast<std::size_t>(number) - 1].variable : 0;
}

cmArray<MachineArgument> CallFrame::marshal(const cmArray<ParameterKind>& parameters)
{
    cmArray<MachineArgument> marshalled;
    for (std::size_t i = 0; i < parameters.size(); ++i)
        marshalled.push_back(marshal(parameters[i], m_arguments[i]));
    return marshalled;
}

MachineArgument CallFrame::marshal(ParameterKind kind, Argument& argument)
{
    if (kind == ParameterKind::number)
        return MachineArgument::ofNumber(m_variables.getInt(argument.variable));
    if (kind == ParameterKind::variable)
        return MachineArgument::ofNumber(argument.variable);
    argument.text = m_variables.getString(argument.variable).value_or("");
    if (kind == ParameterKind::text)
        return MachineArgument::ofPointer(argument.text.getCString());
    return MachineArgument::ofPointer(&argument.text);
}

void CallFrame::writeBack(const cmArray<ParameterKind>& parameters)
{
    for (std::size_t i = 0; i < parameters.size(); ++i) {
        if (parameters[i] != ParameterKind::stringByRef)
            continue;
        const Argument& argument = m_arguments[i];
        // An unchanged string is not stored: storing it would turn a number or a container into a string.
        if (m_variables.getString(argument.variable) != argument.text.getCMString())
            m_variables.setString(argument.variable, argument.text.getCMString());
    }
}
