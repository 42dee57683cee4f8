#pragma once

#include "common/cmArray.h"
#include "common/cmDictionary.h"
#include "common/cmMutex.h"
#include "common/cmString.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>

/// The XML documents that are open, by handles above 0; their nodes by index from 1, 0 for none. Any thread, but a
/// document by one thread at a time.
class XMLDocuments {
public:
    XMLDocuments();
    ~XMLDocuments();

    /// The new document's handle; a negative status when the text is not one complete element, prolog aside.
    std::int32_t load(cmROStringT text);
    /// The document element; 0 when there is no such document.
    std::int32_t root(std::int32_t document);
    /// How many nodes an XPath expression selects (attributes do not count), in document order; a negative status
    /// when there is no such document or the expression cannot be read or selects no nodes but a value.
    std::int32_t select(std::int32_t document, const char* path, cmArray<std::int32_t>& nodes);
    std::int32_t child(std::int32_t document, std::int32_t node, const char* name);
    /// Nothing when the node has no such attribute, or there is no such node.
    std::optional<cmStringT> attribute(std::int32_t document, std::int32_t node, const char* name);
    void close(std::int32_t document);
    std::size_t count() const;

private:
    class Document;
    std::shared_ptr<Document> find(std::int32_t document) const;

    mutable cmMutex m_lock;
    cmDictionary<std::int32_t, std::shared_ptr<Document>> m_documents CM_GUARDED_BY(m_lock);
    std::int32_t m_lastHandle CM_GUARDED_BY(m_lock) = 0;
};
