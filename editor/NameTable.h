#pragma once

#include "editor/VariableStore.h"

#include <functional>
#include <optional>
#include <utility>

/// The named things of the macro language: functions and variables. Their indices start at 1, run through both kinds,
/// and are never given to another name. For the editor's thread.
class NameTable {
public:
    explicit NameTable(VariableStore& variables) : m_variables(variables) {}

    /// 0 when there is nothing of that name and kind now.
    std::int32_t find(const cmStringT& name, int kind) const;

    void setVariable(const cmStringT& name, std::int32_t value);
    void removeVariable(const cmStringT& name);
    /// Handle of the variable, or 0.
    TXHVAR variable(std::int32_t index) const;

    void defineMacro(const cmStringT& name, std::function<cmStringT()> body);
    bool isCallable(std::int32_t index) const;
    /// Runs a macro function; nothing when the index is that of none.
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
