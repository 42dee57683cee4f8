#include "editor/NameTable.h"

#include "txapi/txapi.h"

std::int32_t NameTable::find(const cmStringT& name, int kind) const
{
    const auto found = m_indices.find({kind, name});
    if (found == m_indices.end())
        return 0;
    const Named* named = at(found->second);
    return named->body || named->variable != 0 ? found->second : 0;
}

void NameTable::setVariable(const cmStringT& name, std::int32_t value)
{
    Named& named = obtain(name, txKindVariable);
    if (named.variable == 0)
        named.variable = m_variables.create();
    m_variables.setInt(named.variable, value);
}

void NameTable::removeVariable(const cmStringT& name)
{
    if (find(name, txKindVariable) == 0)
        return;
    Named& named = obtain(name, txKindVariable);
    m_variables.destroy(named.variable);
    named.variable = 0;
}

TXHVAR NameTable::variable(std::int32_t index) const
{
    const Named* named = at(index);
    return named ? named->variable : 0;
}

void NameTable::defineMacro(const cmStringT& name, std::function<cmStringT()> body)
{
    obtain(name, txKindFunction).body = std::move(body);
}

bool NameTable::isCallable(std::int32_t index) const
{
    const Named* named = at(index);
    return named && named->body;
}

std::optional<cmStringT> NameTable::call(std::int32_t index) const
{
    if (!isCallable(index))
        return std::nullopt;
    const auto body = at(index)->body;  // a copy, because the body may define macros and so move the entries
    return body();
}

NameTable::Named& NameTable::obtain(const cmStringT& name, int kind)
{
    const auto [entry, isNew] = m_indices.try_emplace({kind, name}, static_cast<std::int32_t>(m_named.size()) + 1);
    if (isNew)
        m_named.emplace_back();
    return m_named[static_cast<std::size_t>(entry->second) - 1];
}

const NameTable::Named* NameTable::at(std::int32_t index) const
{
    const bool known = index > 0 && static_cast<std::size_t>(index) <= m_named.size();
    return known ? &m_named[static_cast<std::size_t>(index) - 1] : nullptr;
}
