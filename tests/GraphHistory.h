#pragma once

#include "filewatcher/git/graph/GraphLayout.h"

#include <cstdint>
#include <string>
#include <vector>

/// Made commits: for each row the rows of the parents, in order. A parent at or past the end never comes.
using History = std::vector<std::vector<std::uint32_t>>;
using GraphRows = std::vector<GraphRow>;

/// A history as a layout asks for it, of which the first `known` commits have come. Ids differ from rows.
class MadeCommits : public GraphCommits {
public:
    explicit MadeCommits(const History& history) : known(static_cast<std::uint32_t>(history.size())), m_history(history) {}

    static cmStringT hashOf(std::uint32_t row) { return cmROStringT(std::to_string(1000000 + row)); }
    void node(std::uint32_t row, GraphNode& node) const override
    {
        node.id = idOf(row);
        node.parents.clear();
        for (const std::uint32_t parent : m_history[row])
            node.parents.push_back({idOf(parent), rowOf(idOf(parent))});
    }
    std::uint32_t idOf(std::uint32_t row) const override { return 2 * row + 1; }
    std::uint32_t rowOf(std::uint32_t id) const override { return id / 2 < known ? id / 2 : GraphNode::noRow; }
    cmStringT hashText(std::uint32_t id) const override { return hashOf(id / 2); }

    std::uint32_t known;

private:
    const History& m_history;
};

/// A second opinion about GraphLayout, by a look at every column in every row. `known` holds for each row how many commits had
/// come when it was laid out, GraphNode::noRow for all that ever come.
GraphRows slowGraphLayout(const History& history, std::uint32_t cut, const std::vector<std::uint32_t>& known);

/// Stops at the first row that differs.
void expectSame(const GraphRows& rows, const GraphRows& expected);
