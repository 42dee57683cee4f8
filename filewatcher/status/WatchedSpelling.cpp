#include "filewatcher/status/WatchedSpelling.h"

#include <algorithm>

namespace {

cmStringT joined(cmROStringT directory, cmROStringT rest, cmPathStyle style)
{
    return rest.empty() ? cmStringT(directory) : cmJoinPath(directory, rest, style);
}

}  // namespace

WatchedSpelling::WatchedSpelling(cmROStringT watched, cmROStringT real, cmPathStyle style) : m_style(style), m_real(real)
{
    if (!cmIsAbsolutePath(watched, style))
        return;
    const cmStringT directory = cmNativeSeparators(watched, style);
    m_prefixes.push_back({directory, directory});
    if (!real.empty())
        m_prefixes.push_back({m_real, directory});
}

bool WatchedSpelling::isBelow(cmROStringT directory) const
{
    return std::any_of(m_prefixes.begin(), m_prefixes.end(), [&](const Prefix& prefix) {
        cmROStringT rest;
        return cmRelativePath(prefix.from, directory, rest, m_style);
    });
}

void WatchedSpelling::addSpelling(cmROStringT directory, cmROStringT real)
{
    if (m_prefixes.empty() || m_real.isEmpty() || real.empty())
        return;
    const cmStringT watched = m_prefixes.front().to;
    cmROStringT rest;
    if (cmRelativePath(m_real, real, rest, m_style))
        m_prefixes.push_back({joined(directory, rest, m_style), watched});
    else if (cmRelativePath(real, m_real, rest, m_style))
        m_prefixes.push_back({cmStringT(directory), joined(watched, rest, m_style)});
}

cmStringT WatchedSpelling::respell(cmROStringT file) const
{
    cmROStringT rest;
    for (const Prefix& prefix : m_prefixes) {
        if (cmRelativePath(file, prefix.from, rest, m_style))
            return joined(prefix.to, rest, m_style);
    }
    return file;
}
