#include "filewatcher/status/WatchQueue.h"

#include <algorithm>
#include <iterator>
#include <utility>

void WatchQueue::add(WatchEntry entry)
{
    Entries added;  // out of memory leaves the queue as it was
    added.push_back(std::move(entry));
    if (m_index.try_emplace(added.front().path, added.begin()).second)
        m_entries.splice(m_entries.end(), added);
}

std::int32_t WatchQueue::find(cmROStringT path) const
{
    const auto found = m_index.find(path);
    if (found == m_index.end())
        return -1;
    return static_cast<std::int32_t>(std::distance(m_entries.begin(), Entries::const_iterator(found->second)));
}

bool WatchQueue::findFirst(const std::function<bool(const WatchEntry&)>& accepts, WatchEntry& entry) const
{
    const auto found = std::find_if(m_entries.begin(), m_entries.end(), accepts);
    if (found == m_entries.end())
        return false;
    entry = *found;
    return true;
}

void WatchQueue::remove(cmROStringT path)
{
    const auto found = m_index.find(path);
    if (found == m_index.end())
        return;
    const Entries::iterator entry = found->second;
    m_index.erase(found);  // its key is a view of the entry's path
    m_entries.erase(entry);
}

void WatchQueue::clear()
{
    m_index.clear();
    m_entries.clear();
}

bool WatchQueue::takeFirst(WatchEntry& entry)
{
    if (m_entries.empty())
        return false;
    m_index.erase(m_entries.front().path);
    entry = std::move(m_entries.front());
    m_entries.pop_front();
    return true;
}
