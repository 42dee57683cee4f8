#pragma once

#include "common/cmArray.h"
#include "common/cmString.h"
#include "txapi/txapi.h"

#include <cstdint>

/// One of the editor's XML documents. For one thread at a time.
class XMLDocument {
public:
    explicit XMLDocument(const cmStringT& text) : m_handle(txXMLLoadText(text)) {}
    /// A document that is still open is reported and closed.
    ~XMLDocument();
    XMLDocument(const XMLDocument&) = delete;
    XMLDocument& operator=(const XMLDocument&) = delete;

    /// Whether the text was one whole XML document.
    bool isLoaded() const { return m_handle > 0 && txXMLRoot(m_handle) > 0; }
    void close();

    /// The nodes that an XPath expression selects, in document order.
    cmArray<std::int32_t> select(TXPSZ path) const;
    /// The first child element of that name, or 0.
    std::int32_t child(std::int32_t node, TXPSZ name) const { return txXMLChild(m_handle, node, name); }
    /// Null when the node has no such attribute.
    cmStringT attribute(std::int32_t node, TXPSZ name) const;

private:
    std::int32_t m_handle;
};
