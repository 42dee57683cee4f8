#include "filewatcher/bridge/XMLDocument.h"

#include <array>
#include <cstdio>

XMLDocument::~XMLDocument()
{
    if (m_handle <= 0)
        return;
    std::array<char, 64> warning{};
    std::snprintf(warning.data(), warning.size(), "WARN: unclosed handle %d\n", m_handle);
    txDebugLog(warning.data());
    close();
}

void XMLDocument::close()
{
    if (m_handle > 0)
        txXMLClose(m_handle);
    m_handle = 0;
}

cmArray<std::int32_t> XMLDocument::select(TXPSZ path) const
{
    cmArray<std::int32_t> nodes;
    if (txXMLSelect(m_handle, path, nodes) < 0)
        nodes.clear();
    return nodes;
}
