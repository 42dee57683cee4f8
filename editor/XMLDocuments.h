#pragma once

#include "common/cmArray.h"
#include "common/cmDictionary.h"
#include "common/cmMutex.h"
#include "common/cmString.h"

#include <cstddef>
#include <cstdint>
#include <memory>

/// The open XML documents by handle (above 0). A node is a number from 1, which a later call need not give again; 0 is no node.
/// Any thread may call, but only one at a time for the same document.
class XMLDocuments {
public:
    XMLDocuments();
    ~XMLDocuments();

    /// Parses `text` and returns the new document's handle; a negative status when the text, apart from its prolog, is not
    /// exactly one complete element.
    std::int32_t load(cmROStringT text);
    /// The document element; 0 when there is no such document.
    std::int32_t root(std::int32_t document);
    /// Fills `nodes` with the nodes that an XPath expression selects, without attributes, in document order. Returns their
    /// number; a negative status when there is no such document, or the expression is invalid or selects no nodes but a value.
    std::int32_t select(std::int32_t document, const char* path, cmArray<std::int32_t>& nodes);
    /// The first child element of that name; 0 when there is none.
    std::int32_t child(std::int32_t document, std::int32_t node, const char* name);
    /// Sets `value` to that of the attribute; false, and no change, when there is no such node or attribute.
    bool attribute(std::int32_t document, std::int32_t node, const char* name, cmStringT& value);
    void close(std::int32_t document);
    /// How many documents are open.
    std::size_t count() const;

private:
    class Document;
    std::shared_ptr<Document> find(std::int32_t document) const;

    mutable cmMutex m_lock;
    cmDictionary<std::int32_t, std::shared_ptr<Document>> m_documents CM_GUARDED_BY(m_lock);
    std::int32_t m_lastHandle CM_GUARDED_BY(m_lock) = 0;
};
