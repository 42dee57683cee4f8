#include "editor/XMLDocuments.h"

#include <pugixml.hpp>

#include <limits>

namespace {

constexpr std::int32_t failed = -1;

}  // namespace

class XMLDocuments::Document {
public:
    bool load(cmROStringT text)
    {
        // Parsed as a fragment, so that text outside the document element is kept and can be refused. Document types are not
        // read, so only the five entities of XML itself are known.
        const auto options = pugi::parse_default | pugi::parse_fragment;
        return m_tree.load_buffer(text.data(), text.size(), options) && isOneElement();
    }

    std::int32_t root() { return indexOf(m_tree.document_element()); }

    std::int32_t select(const char* path, cmArray<std::int32_t>& nodes)
    {
        pugi::xpath_node_set found = m_tree.select_nodes(path);
        found.sort();
        for (const pugi::xpath_node& one : found)
            if (one.node())
                nodes.push_back(indexOf(one.node()));
        return static_cast<std::int32_t>(nodes.size());
    }

    std::int32_t child(std::int32_t node, const char* name) { return indexOf(at(node).child(name)); }

    bool attribute(std::int32_t node, const char* name, cmStringT& value) const
    {
        const pugi::xml_attribute found = at(node).attribute(name);
        if (found)
            value.assign(found.value());
        return !found.empty();
    }

private:
    bool isOneElement() const
    {
        int elements = 0;
        for (const pugi::xml_node& node : m_tree.children()) {
            if (node.type() == pugi::node_element)
                ++elements;
            else if (node.type() == pugi::node_pcdata || node.type() == pugi::node_cdata)
                return false;
        }
        return elements == 1;
    }

    pugi::xml_node at(std::int32_t node) const
    {
        const bool known = node > 0 && static_cast<std::size_t>(node) <= m_nodes.size();
        return known ? m_nodes[static_cast<std::size_t>(node) - 1] : pugi::xml_node();
    }

    /// An index for a node, each time a new one: to look for an older one would cost more than all else.
    std::int32_t indexOf(const pugi::xml_node& node)
    {
        if (!node)
            return 0;
        m_nodes.push_back(node);
        return static_cast<std::int32_t>(m_nodes.size());
    }

    pugi::xml_document m_tree;
    cmArray<pugi::xml_node> m_nodes;
};

XMLDocuments::XMLDocuments() = default;
XMLDocuments::~XMLDocuments() = default;

std::int32_t XMLDocuments::load(cmROStringT text)
{
    auto document = std::make_shared<Document>();
    if (!document->load(text))
        return failed;
    cmMutexLock hold(m_lock);
    do
        m_lastHandle = m_lastHandle == std::numeric_limits<std::int32_t>::max() ? 1 : m_lastHandle + 1;
    while (m_documents.contains(m_lastHandle));
    m_documents.emplace(m_lastHandle, std::move(document));
    return m_lastHandle;
}

std::int32_t XMLDocuments::root(std::int32_t document)
{
    const auto found = find(document);
    return found ? found->root() : 0;
}

std::int32_t XMLDocuments::select(std::int32_t document, const char* path, cmArray<std::int32_t>& nodes)
{
    nodes.clear();
    const auto found = find(document);
    if (!found || !path)
        return failed;
    try {
        return found->select(path, nodes);
    } catch (const pugi::xpath_exception&) {
        return failed;
    }
}

std::int32_t XMLDocuments::child(std::int32_t document, std::int32_t node, const char* name)
{
    cmMutexLock hold(m_lock);
    const auto found = m_documents.find(document);
    return found != m_documents.end() && name ? found->second->child(node, name) : 0;
}

bool XMLDocuments::attribute(std::int32_t document, std::int32_t node, const char* name, cmStringT& value)
{
    cmMutexLock hold(m_lock);
    const auto found = m_documents.find(document);
    return found != m_documents.end() && name && found->second->attribute(node, name, value);
}

void XMLDocuments::close(std::int32_t document)
{
    std::shared_ptr<Document> closed;  // freed after the lock is released, because freeing a large document takes time
    cmMutexLock hold(m_lock);
    if (const auto found = m_documents.find(document); found != m_documents.end()) {
        closed = std::move(found->second);
        m_documents.erase(found);
    }
}

std::size_t XMLDocuments::count() const
{
    cmMutexLock hold(m_lock);
    return m_documents.size();
}

std::shared_ptr<XMLDocuments::Document> XMLDocuments::find(std::int32_t document) const
{
    cmMutexLock hold(m_lock);
    const auto found = m_documents.find(document);
    return found == m_documents.end() ? nullptr : found->second;
}
