#pragma once

#include "editor/HandleTable.h"
#include "editor/Variable.h"

#include <cstddef>
#include <optional>

/// All variables of the editor, by handle. A variable that stands for itself lives until it is destroyed; an element
/// lives as long as its container holds it, gets its handle when it is first asked for, and keeps it. A handle is
/// invalid from the moment its variable goes: every operation then does nothing and answers 0.
/// For the editor's thread.
class VariableStore {
public:
    VariableStore();

    /// A new empty variable.
    TXHVAR create();
    /// The same, for a caller who gives it back through freeForCaller; no other variable can be freed there.
    TXHVAR createForCaller();
    void freeForCaller(TXHVAR handle);
    /// A new variable that holds a deep copy.
    TXHVAR copy(TXHVAR source);
    /// Destroys what create or copy made, with everything in it.
    void destroy(TXHVAR handle);
    bool isValid(TXHVAR handle) const { return find(handle) != nullptr; }
    /// How many variables stand for themselves now; elements are not counted.
    std::size_t count() const { return m_owned.count(); }

    /// Null when the handle is invalid.
    const VariableValue* value(TXHVAR handle) const;
    std::int32_t getInt(TXHVAR handle) const;
    void setInt(TXHVAR handle, std::int64_t value);
    /// Nothing when the handle is invalid.
    std::optional<cmStringT> getString(TXHVAR handle) const;
    void setString(TXHVAR handle, const cmStringT& value);

    std::int32_t arrayLength(TXHVAR array) const;
    TXHVAR arrayElement(TXHVAR array, std::int32_t index, bool create);
    TXHVAR hashElement(TXHVAR table, const cmStringT& key, bool create);
    TXHVAR nextElement(tamarin::TMIterator& iterator);

    void defineClass(const cmStringT& name, const cmArray<cmStringT>& fields);
    /// False when there is no such class or variable.
    bool initInstance(TXHVAR variable, const cmStringT& className);
    TXHVAR field(TXHVAR instance, const cmStringT& name);

private:
    Variable* find(TXHVAR handle) const;
    template <class Kind>
    Kind* findAs(TXHVAR handle) const;
    template <class Container>
    Container* container(TXHVAR handle, bool create);
    TXHVAR handleOf(Variable& variable);
    TXHVAR handleOf(std::unique_ptr<Variable>& element);
    void replace(TXHVAR handle, VariableValue value);
    void forgetElements(Variable& variable);
    void forget(Variable& variable);

    HandleTable<std::unique_ptr<Variable>> m_owned;
    HandleTable<Variable*> m_byHandle;
    cmDictionary<cmStringT, cmArray<cmStringT>> m_classes;
    TXHVAR m_lastHandle = 0;
};
