#include "common/cmStringCatHelper.h"
#include "editor/Prototype.h"
#include "txhost/Commands.h"
#include "txhost/Console.h"
#include "txhost/InterruptWatch.h"
#include "txhost/JsonText.h"

#include <limits>
#include <optional>
#include <string>
#include <utility>

namespace {

Prototype findPrototype(const Editor& editor, const std::string& name)
{
    for (const cmStringT& text : editor.prototypes()) {
        if (std::optional<Prototype> prototype = parsePrototype(text); prototype && prototype->name == name)
            return *prototype;
    }
    throw UsageError("no function is named " + name + " (txhost functions lists them)");
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
        throw UsageError("not JSON: " + text);
    const TXHVAR variable = txHvarAlloc();
    fillVariable(variable, value);
    return variable;
}

bool isInt32(const Json& value)
{
    return value.is_number_integer() && value >= std::numeric_limits<std::int32_t>::min()
           && value <= std::numeric_limits<std::int32_t>::max();
}

CallArgument argumentFromText(const Prototype& prototype, std::size_t index, const std::string& text)
{
    if (isByReference(prototype, index))
        return CallArgument::variable(variableFromJson(text));
    const bool number = index < prototype.parameters.size() && prototype.parameters[index] == ParameterKind::number;
    const Json value = number ? Json::parse(text, nullptr, false) : Json();
    if (number && !isInt32(value))
        throw UsageError("not a 32-bit number: " + text);
    return number ? CallArgument(value.get<std::int32_t>()) : CallArgument(cmStringT(cmROStringT(text)));
}

void printAnswer(Json answer, bool json)
{
    if (json) {
        printJson(std::move(answer));
        return;
    }
    if (answer.contains("result"))
        console::printLine(jsonText(answer["result"]));
    for (const Json& variable : answer.value("variables", Json::array()))
        console::printLine(jsonText(variable));
}

}  // namespace

int runCall(const HostOptions& options, const std::string& name, const std::vector<std::string>& texts)
{
    Host host(options);
    const Prototype prototype = findPrototype(host.editor(), name);
    cmArray<CallArgument> arguments;
    for (const std::string& text : texts)
        arguments.push_back(argumentFromText(prototype, arguments.size(), text));
    const CallResult result = [&] {
        const InterruptWatch interrupts({});
        CallResult answer = host.editor().call(name, arguments);
        interrupts.check();
        return answer;
    }();
    if (!result.found)
        throw UsageError(result.error.c_str());

    Json answer{{"function", name}};
    if (result.number)
        answer["result"] = *result.number;
    else if (!result.text.isNull())
        answer["result"] = jsonString(result.text);
    for (const CallArgument& argument : arguments) {
        if (argument.isVariable())
            answer["variables"].push_back(*VariableJson(*host.editor().value(argument.handle())));
    }
    printAnswer(std::move(answer), options.json);
    // -1 means different things for different functions, so it is not explained.
    const cmStringT meaning = result.number && *result.number != -1 ? meaningOfStatus(*result.number) : cmStringT();
    if (meaning.isNull())
        return 0;
    if (options.json) {
        Json object = failureJson({*result.number, meaning});
        object["function"] = name;
        printJson(std::move(object));
    }
    console::printError(cmStringT(cmCat(name) + ": " + std::to_string(*result.number) + ", " + meaning));
    return 1;
}

int runFunctions(const HostOptions& options)
{
    Host host(options);
    for (const cmStringT& prototype : host.editor().prototypes())
        console::printLine(options.json ? jsonText({{"prototype", jsonString(prototype)}}) : prototype);
    return 0;
}
