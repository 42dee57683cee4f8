#include "editor/VariableStore.h"

#include <limits>
#include <utility>

namespace {

// A larger index is a caller's error: the array would not fit into memory.
constexpr std::int32_t maxArrayLength = 1 << 26;

}  // namespace

VariableStore::VariableStore()
{
    create();  // it gets handle 1, which is txLastResult
}

TXHVAR VariableStore::create()
{
    auto variable = std::make_unique<Variable>();
    const TXHVAR handle = handleOf(*variable);
    m_owned.insert(handle, std::move(variable));
    return handle;
}

TXHVAR VariableStore::createForCaller()
{
    const TXHVAR handle = create();
    find(handle)->callerOwned = true;
    return handle;
}

void VariableStore::freeForCaller(TXHVAR handle)
{
    const Variable* variable = find(handle);
    if (variable && variable->callerOwned)
        destroy(handle);
}

TXHVAR VariableStore::copy(TXHVAR source)
{
    if (!isValid(source))
        return 0;
    const TXHVAR handle = create();
    find(handle)->value = copyOfVariable(find(source)->value);
    return handle;
}

void VariableStore::destroy(TXHVAR handle)
{
    const std::unique_ptr<Variable>& variable = m_owned.find(handle);
    if (!variable)
        return;
    forget(*variable);
    m_owned.erase(handle);
}

const VariableValue* VariableStore::value(TXHVAR handle) const
{
    const Variable* variable = find(handle);
    return variable ? &variable->value : nullptr;
}

std::int32_t VariableStore::getInt(TXHVAR handle) const
{
    const Variable* variable = find(handle);
    return variable ? variableAsInt(variable->value) : 0;
}

void VariableStore::setInt(TXHVAR handle, std::int64_t value)
{
    replace(handle, value);
}

std::optional<cmStringT> VariableStore::getString(TXHVAR handle) const
{
    const Variable* variable = find(handle);
    return variable ? std::optional(variableAsText(variable->value)) : std::nullopt;
}

void VariableStore::setString(TXHVAR handle, const cmStringT& value)
{
    replace(handle, value);
}

std::int32_t VariableStore::arrayLength(TXHVAR array) const
{
    const auto* elements = findAs<VariableArray>(array);
    return elements ? static_cast<std::int32_t>(elements->size()) : 0;
}

TXHVAR VariableStore::arrayElement(TXHVAR array, std::int32_t index, bool create)
{
    if (index < 0 || index >= maxArrayLength)
        return 0;
    auto* elements = container<VariableArray>(array, create);
    if (!elements)
        return 0;
    const auto position = static_cast<std::size_t>(index);
    if (position >= elements->size()) {
        if (!create)
            return 0;
        elements->resize(position + 1);
    }
    return handleOf((*elements)[position]);
}

TXHVAR VariableStore::hashElement(TXHVAR table, const cmStringT& key, bool create)
{
    auto* elements = container<VariableTable>(table, create);
    if (!elements)
        return 0;
    if (create)
        return handleOf((*elements)[key]);
    const auto found = elements->find(key);
    return found == elements->end() ? 0 : handleOf(found->second);
}

TXHVAR VariableStore::nextElement(tamarin::TMIterator& iterator)
{
    tamarin::TMIteratorLevel* level = iterator.top();
    if (!level)
        return 0;
    if (auto* array = findAs<VariableArray>(level->container)) {
        const auto position = static_cast<std::size_t>(level->next);
        if (position >= array->size())
            return 0;
        ++level->next;
        return handleOf((*array)[position]);
    }
    auto* table = findAs<VariableTable>(level->container);
    if (!table)
        return 0;
    const auto next = level->lastKey.isNull() ? table->begin() : table->upper_bound(level->lastKey);
    if (next == table->end())
        return 0;
    ++level->next;
    level->lastKey = next->first;
    return handleOf(next->second);
}

void VariableStore::defineClass(const cmStringT& name, const cmArray<cmStringT>& fields)
{
    m_classes[name] = fields;
}

bool VariableStore::initInstance(TXHVAR variable, const cmStringT& className)
{
    const auto found = m_classes.find(className);
    if (found == m_classes.end() || !isValid(variable))
        return false;
    VariableInstance instance;
    for (const cmStringT& name : found->second)
        instance.fields.emplace(name, nullptr);
    replace(variable, std::move(instance));
    return true;
}

TXHVAR VariableStore::field(TXHVAR instance, const cmStringT& name)
{
    auto* value = findAs<VariableInstance>(instance);
    if (!value)
        return 0;
    const auto found = value->fields.find(name);
    return found == value->fields.end() ? 0 : handleOf(found->second);
}

Variable* VariableStore::find(TXHVAR handle) const
{
    return m_byHandle.find(handle);
}

template <class Kind>
Kind* VariableStore::findAs(TXHVAR handle) const
{
    Variable* variable = find(handle);
    return variable ? std::get_if<Kind>(&variable->value) : nullptr;
}

template <class Container>
Container* VariableStore::container(TXHVAR handle, bool create)
{
    if (create && !findAs<Container>(handle))
        replace(handle, Container());
    return findAs<Container>(handle);
}

TXHVAR VariableStore::handleOf(Variable& variable)
{
    if (variable.handle != 0)
        return variable.handle;
    // A handle is reused only after all others, so that a stale handle rarely refers to a new variable.
    do
        m_lastHandle = m_lastHandle == std::numeric_limits<TXHVAR>::max() ? 1 : m_lastHandle + 1;
    while (m_byHandle.find(m_lastHandle));
    variable.handle = m_lastHandle;
    m_byHandle.insert(variable.handle, &variable);
    return variable.handle;
}

TXHVAR VariableStore::handleOf(std::unique_ptr<Variable>& element)
{
    if (!element)
        element = std::make_unique<Variable>();
    return handleOf(*element);
}

void VariableStore::replace(TXHVAR handle, VariableValue value)
{
    if (Variable* variable = find(handle)) {
        forgetElements(*variable);
        variable->value = std::move(value);
    }
}

void VariableStore::forgetElements(Variable& variable)
{
    const auto forgetTable = [this](VariableTable& table) {
        for (auto& [key, element] : table)
            if (element)
                forget(*element);
    };
    if (auto* array = std::get_if<VariableArray>(&variable.value)) {
        for (auto& element : *array)
            if (element)
                forget(*element);
    } else if (auto* table = std::get_if<VariableTable>(&variable.value)) {
        forgetTable(*table);
    } else if (auto* instance = std::get_if<VariableInstance>(&variable.value)) {
        forgetTable(instance->fields);
    }
}

void VariableStore::forget(Variable& variable)
{
    if (variable.handle != 0)
        m_byHandle.erase(variable.handle);
    forgetElements(variable);
}
