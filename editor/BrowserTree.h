#pragma once

#include "editor/Editor.h"
#include "editor/VariableStore.h"

/// The rows of the browser tree. A node's number is given in the order of adding and stays; where its row is depends
/// on the others. Adding at the end takes constant time, elsewhere time in proportion to the rows below.
/// For the editor's thread.
class BrowserTree {
public:
    explicit BrowserTree(VariableStore& variables) : m_variables(variables) {}

    const std::deque<TreeRow>& rows() const { return m_rows; }
    void clear();
    /// Adds a row below that of `after` (0: as the first) and returns its node; 0 when there is no such node.
    std::int32_t add(std::int32_t after, const cmStringT& caption, std::int32_t flags, TXHVAR userData);
    void setDate(std::int32_t node, std::int32_t column, const TXDATETIME& date);

private:
    bool isNode(std::int32_t node) const;

    VariableStore& m_variables;
    std::deque<TreeRow> m_rows;
    std::deque<std::size_t> m_rowOfNode;  ///< at node - 1
};
