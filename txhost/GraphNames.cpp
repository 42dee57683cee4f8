#include "txhost/GraphNames.h"

#include "common/cmStringCatHelper.h"
#include "filewatcher/git/commits/ShortHash.h"

#include <algorithm>
#include <utility>

namespace {

cmStringT nameOf(const GraphEdge& edge)
{
    return edge.otherHash.isEmpty() ? "working copy" : shortHash(edge.otherHash);
}

/// Appends `sign`, the names and `end` to `text`; nothing without names.
void addList(cmStringT& text, cmROStringT sign, const cmArray<cmStringT>& names, cmROStringT end = "")
{
    for (const cmStringT& name : names) {
        if (&name != names.data())
            text += ", ";
        else
            text += cmStringT(cmCat(text.isEmpty() ? "" : "  ") + sign);
        text += name;
    }
    if (!names.empty())
        text += end;
}

}  // namespace

cmStringT GraphNames::next(const GraphRow& row)
{
    cmArray<cmStringT> children = std::exchange(m_children, {});
    const cmArray<std::uint16_t> namedAbove = std::exchange(m_namedLines, {});
    cmArray<cmStringT> parents;
    cmArray<cmStringT> withoutLine;
    cmArray<cmStringT> ofOthers;
    for (const GraphEdge& edge : row.edges) {
        if (edge.kind == GraphEdgeKind::begins && !edge.otherHash.isEmpty()) {
            parents.push_back(nameOf(edge));
            m_namedLines.push_back(edge.to);
        } else if (edge.kind == GraphEdgeKind::stub) {
            withoutLine.push_back(nameOf(edge));
        } else if (edge.kind == GraphEdgeKind::arrowUp) {
            (edge.to == row.column ? children : m_children).push_back(nameOf(edge));
        } else if (edge.kind == GraphEdgeKind::arrowDown
                   && std::find(namedAbove.begin(), namedAbove.end(), edge.from) == namedAbove.end()) {
            ofOthers.push_back(nameOf(edge));
        }
    }
    cmStringT text("");
    addList(text, "↓ ", parents);
    addList(text, "↑ ", children);
    addList(text, "◍ ", withoutLine);
    addList(text, "(↓ ", ofOthers, ")");
    return text;
}
