#include "editor/Prototype.h"
#include "txhost/Commands.h"
#include "txhost/Console.h"
#include "txhost/JsonText.h"

#include <optional>

namespace {

Prototype findPrototype(const Editor& editor, const std::string& name)
{
    for (const cmStringT& text : editor.prototypes()) {
        if (std::optional<Prototype> prototype = parsePrototype(text); prototype && prototype->name == name)
            return *prototype;
    }
    throw HostError("no function is named " + name + " (txhost functions lists them)");
}

bool isByReference(const Prototype& prototype, std::size_t index)
{
    if (index >= prototype.parameters.size())
        return false;
    const ParameterKind kind = prototype.parameters[index];
    return kind == ParameterKind::variable || kind == ParameterKind::stringByRef;
}

TXHVAR variableFromJson(const std::string& text)
{
    const Json value = Json::parse(text, nullptr, false);
    if (value.is_discarded())
        throw HostError("not JSON: " + text);
    const TXHVAR variable = txHvarAlloc();
    fillVariable(variable, value);
    return variable;
}

CallArgument argumentFromText(const Prototype& prototype, std::size_t index, const std::string& text)
{
    if (isByReference(prototype, index))
        return CallArgument::variable(variableFromJson(text));
    const bool number = index < prototype.parameters.size() && prototype.parameters[index] == ParameterKind::number;
    const Json value = number ? Json::parse(text, nullptr, false) : Json();
    if (number && !value.is_number_integer())
        throw HostError("not a number: " + text);
    return number ? CallArgument(value.get<std::int32_t>()) : CallArgument(cmStringT(cmROStringT(text)));
}

}  // namespace

int runCall(const HostOptions& options, const std::string& name, const std::vector<std::string>& texts)
{
    Host host(options);
    const Prototype prototype = findPrototype(host.editor(), name);
    cmArray<CallArgument> arguments;
    for (const std::string& text : texts)
        arguments.push_back(argumentFromText(prototype, arguments.size(), text));
    const CallResult result = host.editor().call(name, arguments);
    if (!result.found)
        throw HostError(result.error.c_str());

    Json answer{{"function", name}};
    if (result.number)
        answer["result"] = *result.number;
    else if (!result.text.isNull())
        answer["result"] = jsonString(result.text);
    for (const CallArgument& argument : arguments) {
        if (argument.isVariable())
            answer["variables"].push_back(jsonOfVariable(*host.editor().value(argument.handle())));
    }
    if (options.json) {
        console::printLine(jsonText(answer));
        return 0;
    }
    if (answer.contains("result"))
        console::printLine(jsonText(answer["result"]));
    for (const Json& variable : answer.value("variables", Json::array()))
        console::printLine(jsonText(variable));
    return 0;
}
