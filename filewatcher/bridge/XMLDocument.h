#pragma once

#include "common/cmArray.h"
#include "common/cmString.h"
#include "txapi/txapi.h"

#include <cstdint>

/// Owns an XML document that the editor has parsed. For one thread at a time. A node is a number above 0.
class XMLDocument {
public:
    /// Loads the text; ask `isLoaded` for success.
    explicit XMLDocument(const cmStringT& text) : m_handle(txXMLLoadText(text)) {}
    /// Closes a document that is still open, and reports it as a warning in the debug log.
    ~XMLDocument();
    XMLDocument(const XMLDocument&) = delete;
    XMLDocument& operator=(const XMLDocument&) = delete;

    /// Whether the text was a complete XML document.
    bool isLoaded() const { return m_handle > 0 && txXMLRoot(m_handle) > 0; }
    /// Frees the document. Its nodes are invalid afterwards.
    void close();

    /// Returns the nodes that an XPath expression selects, in document order; none for a faulty expression.
    cmArray<std::int32_t> select(TXPSZ path) const;
    /// Returns the first child element with this name, or 0.
    std::int32_t child(std::int32_t node, TXPSZ name) const { return txXMLChild(m_handle, node, name); }
    /// Replaces `value` by the attribute's; returns false and empties it when there is no such node or attribute.
    bool readAttribute(std::int32_t node, TXPSZ name, cmStringT& value) const
    {
        return txXMLCFGGetAttributeCMString(m_handle, node, name, value) != 0;
    }

private:
    std::int32_t m_handle;
};
