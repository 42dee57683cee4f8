#include "editor/PropertyTable.h"

TXHVAR PropertyTable::find(std::int32_t number) const
{
    const auto found = m_properties.find(number);
    return found == m_properties.end() ? 0 : found->second;
}

TXHVAR PropertyTable::obtain(std::int32_t number)
{
    TXHVAR& property = m_properties[number];
    if (property == 0)
        property = m_variables.create();
    return property;
}

void PropertyTable::remove(std::int32_t number)
{
    m_variables.destroy(find(number));
    m_properties.erase(number);
}
