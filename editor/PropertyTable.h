#pragma once

#include "editor/VariableStore.h"

/// The numbered properties of the editor, each in a variable. For the editor's thread.
class PropertyTable {
public:
    explicit PropertyTable(VariableStore& variables) : m_variables(variables) {}

    /// The handle of the property's variable; 0 when the property is not set.
    TXHVAR find(std::int32_t number) const
    {
        const auto found = m_properties.find(number);
        return found == m_properties.end() ? 0 : found->second;
    }

    /// The handle of the property's variable, which is created empty when the property is not set.
    TXHVAR obtain(std::int32_t number)
    {
        TXHVAR& property = m_properties[number];
        if (property == 0)
            property = m_variables.create();
        return property;
    }

    void remove(std::int32_t number)
    {
        m_variables.destroy(find(number));
        m_properties.erase(number);
    }

private:
    VariableStore& m_variables;
    cmDictionary<std::int32_t, TXHVAR> m_properties;
};
