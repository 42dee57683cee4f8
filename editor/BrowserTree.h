#pragma once

#include "editor/Editor.h"
#include "editor/VariableStore.h"

/// The rows of the browser tree. Nodes are numbered from 1 in the order in which they are added. A node keeps its number; the
/// position of its row changes when rows are inserted above it. Appending takes constant time; inserting takes time in
/// proportion to the number of nodes. For the editor's thread.
class BrowserTree {
public:
    explicit BrowserTree(VariableStore& variables) : m_variables(variables) {}

    /// With `kept` false the tree has no rows of its own, and says that it needs none. Removes all rows.
    void keepRows(bool kept);
    /// How many rows there are; the greatest number when the tree needs none.
    std::int32_t rowCount() const;
    /// The rows from the top; none when they are not kept.
    const std::deque<TreeRow>& rows() const { return m_rows; }
    /// Removes all rows and destroys their copies of user data.
    void clear();
    /// Inserts a row below the row of node `after`, or as the first when `after` is 0. The tree keeps a deep copy of `userData`.
    /// Returns the new node; 0 when there is no node `after`.
    std::int32_t add(std::int32_t after, const cmStringT& caption, std::int32_t flags, TXHVAR userData);
    /// Does nothing when there is no such node.
    void setDate(std::int32_t node, std::int32_t column, const TXDATETIME& date);

private:
    bool isNode(std::int32_t node) const { return node > 0 && static_cast<std::size_t>(node) <= m_rowOfNode.size(); }

    VariableStore& m_variables;
    bool m_keepsRows = true;
    std::deque<TreeRow> m_rows;
    std::deque<std::size_t> m_rowOfNode;  ///< row index of each node, at node - 1
};
