#pragma once

#include "editor/VariableStore.h"

/// The numbered properties, a variable each. For the editor's thread.
class PropertyTable {
public:
    explicit PropertyTable(VariableStore& variables) : m_variables(variables) {}

    /// Handle of the variable behind it, or 0 when it is unset.
    TXHVAR find(std::int32_t number) const;
    /// The same; an unset property becomes an empty one.
    TXHVAR obtain(std::int32_t number);
    void remove(std::int32_t number);

private:
    VariableStore& m_variables;
    cmDictionary<std::int32_t, TXHVAR> m_properties;
};
