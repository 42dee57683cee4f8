#pragma once

#include "editor/VariableStore.h"

#include <functional>
#include <optional>
#include <utility>

/// The functions and variables of the macro language by name and kind (txKindFunction, txKindVariable). Both kinds share one
/// series of indices, which starts at 1; an index is never reused for another name. For the editor's thread.
class NameTable {
public:
    explicit NameTable(VariableStore& variables) : m_variables(variables) {}

    /// The index of a name; 0 when nothing of that name and kind exists now.
    std::int32_t find(const cmStringT& name, int kind) const;

    /// Sets an integer variable, which is created when needed.
    void setVariable(const cmStringT& name, std::int32_t value);
    /// Destroys the variable. The name keeps its index for a later setVariable.
    void removeVariable(const cmStringT& name);
    /// The variable's handle; 0 when there is none.
    TXHVAR variable(std::int32_t index) const;

    /// Defines a macro function without arguments, or replaces it.
    void defineMacro(const cmStringT& name, std::function<cmStringT()> body);
    bool isCallable(std::int32_t index) const;
    /// Runs a macro function and returns its result; nothing when there is no macro function with this index.
    std::optional<cmStringT> call(std::int32_t index) const;

private:
    struct Named {
        TXHVAR variable = 0;
        std::function<cmStringT()> body;
    };
    Named& obtain(const cmStringT& name, int kind);
    const Named* at(std::int32_t index) const;

    VariableStore& m_variables;
    cmArray<Named> m_named;
    cmSortedDictionary<std::pair<int, cmStringT>, std::int32_t> m_indices;
};
