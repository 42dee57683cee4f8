#pragma once

#include "editor/HandleTable.h"
#include "editor/Variable.h"

#include <cstddef>
#include <optional>

/// All variables of the editor by handle. A free-standing variable lives until it is destroyed. An element lives as long as its
/// container holds it; it gets a handle when it is first asked for and keeps it. When a variable is destroyed its handle becomes
/// invalid; every operation on an invalid handle does nothing and returns 0. For the editor's thread.
class VariableStore {
public:
    VariableStore();

    /// Creates an empty variable and returns its handle.
    TXHVAR create();
    /// Like create, for txHvarAlloc. Only such a variable can be destroyed by freeForCaller.
    TXHVAR createForCaller();
    void freeForCaller(TXHVAR handle);
    /// Creates a variable with a deep copy of the value of `source`.
    TXHVAR copy(TXHVAR source);
    /// Destroys a free-standing variable with all its elements. Does nothing for an element.
    void destroy(TXHVAR handle);
    bool isValid(TXHVAR handle) const { return find(handle) != nullptr; }
    /// How many free-standing variables exist now.
    std::size_t count() const { return m_owned.count(); }

    /// The value, valid until the variable changes; null when the handle is invalid.
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
    /// Makes the variable a new instance of the class. Returns false when there is no such class or variable.
    bool initInstance(TXHVAR variable, const cmStringT& className);
    TXHVAR field(TXHVAR instance, const cmStringT& name);

private:
    /// Null when the handle is invalid.
    Variable* find(TXHVAR handle) const;
    /// The value of a variable that holds a Kind; null for any other.
    template <class Kind>
    Kind* findAs(TXHVAR handle) const;
    /// Like findAs; with `create` a variable that holds something else becomes an empty Container first.
    template <class Container>
    Container* container(TXHVAR handle, bool create);
    /// The handle of a variable, which is assigned at the first call; a null element is created.
    TXHVAR handleOf(Variable& variable);
    TXHVAR handleOf(std::unique_ptr<Variable>& element);
    /// Sets a new value; the handles of the old value's elements become invalid.
    void replace(TXHVAR handle, VariableValue value);
    /// Invalidates the handles of all elements of a variable.
    void forgetElements(Variable& variable);
    /// Invalidates the handle of the variable and those of its elements.
    void forget(Variable& variable);

    HandleTable<std::unique_ptr<Variable>> m_owned;
    HandleTable<Variable*> m_byHandle;
    cmDictionary<cmStringT, cmArray<cmStringT>> m_classes;
    TXHVAR m_lastHandle = 0;
};
