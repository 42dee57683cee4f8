#include "editor/FunctionTable.h"

#include "editor/MachineCall.h"

#include <algorithm>
#include <string>
#include <utility>

namespace {

static_assert(maxParameters == maxMachineArguments);

CallResult refusal(cmStringT reason)
{
    CallResult result;
    result.error = std::move(reason);
    return result;
}

CallResult invoke(ResultKind kind, TXPFN function, const cmArray<MachineArgument>& arguments)
{
    CallResult result;
    result.found = true;
    if (kind == ResultKind::number)
        result.number = machineCall<std::int32_t>(function, arguments);
    else if (kind == ResultKind::text)
        result.text = machineCall<const char*>(function, arguments);
    else
        machineCall<void>(function, arguments);
    return result;
}

}  // namespace

bool FunctionTable::add(cmROStringT prototype, TXPFN function)
{
    std::optional<Prototype> parsed = parsePrototype(prototype);
    if (!parsed || !function)
        return false;
    Function added{prototype, std::move(*parsed), function};
    const auto sameName = [&](const Function& other) { return other.prototype.name == added.prototype.name; };
    const auto old = std::find_if(m_functions.begin(), m_functions.end(), sameName);
    if (old == m_functions.end())
        m_functions.push_back(std::move(added));
    else
        *old = std::move(added);
    return true;
}

cmArray<cmStringT> FunctionTable::prototypes() const
{
    cmArray<cmStringT> texts;
    for (const Function& function : m_functions)
        texts.push_back(function.text);
    return texts;
}

CallResult FunctionTable::call(cmROStringT name, const cmArray<CallArgument>& arguments)
{
    const Function* function = find(name);
    if (!function) {
        cmStringT error = "no function is named ";
        error += name;
        return refusal(std::move(error));
    }
    const std::size_t needed = function->prototype.parameters.size();
    if (arguments.size() < needed) {
        cmStringT error = function->text;
        error += cmROStringT(" was given too few arguments: " + std::to_string(arguments.size()));
        return refusal(std::move(error));
    }
    for (const CallArgument& argument : arguments)
        if (argument.isVariable() && !m_variables.isValid(argument.handle()))
            return refusal("an argument is the handle of no variable");
    return run(Function(*function), arguments);
}

std::int32_t FunctionTable::argumentCount() const
{
    return m_running.empty() ? 0 : m_running.back()->argumentCount();
}

TXHVAR FunctionTable::argument(std::int32_t number) const
{
    return m_running.empty() ? 0 : m_running.back()->argument(number);
}

const FunctionTable::Function* FunctionTable::find(cmROStringT name) const
{
    const auto named = [&](const Function& function) { return function.prototype.name == name; };
    const auto found = std::find_if(m_functions.begin(), m_functions.end(), named);
    return found == m_functions.end() ? nullptr : &*found;
}

/// `function` must be a copy: the called function may register functions, which moves the entries of m_functions.
CallResult FunctionTable::run(const Function& function, const cmArray<CallArgument>& arguments)
{
    CallFrame frame(m_variables, arguments);
    const cmArray<MachineArgument> machineArguments = frame.marshal(function.prototype.parameters);
    m_running.push_back(&frame);
    CallResult result = invoke(function.prototype.result, function.address, machineArguments);
    m_running.pop_back();
    frame.writeBack(function.prototype.parameters);
    return result;
}
