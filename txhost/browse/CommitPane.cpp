#include "txhost/browse/CommitPane.h"

#include "common/cmStringCatHelper.h"
#include "filewatcher/git/commits/ShortHash.h"

#include <utility>

void CommitPane::show(std::shared_ptr<const CommitDetails> details)
{
    const bool isSame = m_details.details() && details && m_details.details()->hash == details->hash;
    if (m_diff && !(isSame && m_diff->update(details)))
        m_diff.reset();
    m_details.show(std::move(details));
}

const FileChange* CommitPane::file() const
{
    return m_diff ? &m_diff->file() : m_details.target().file;
}

bool CommitPane::press(const Key& key)
{
    if (window().press(key))
        return true;
    if (!m_diff)
        return false;
    const char32_t code = key.kind == KeyKind::character ? key.code : 0;
    if (code == '[' || code == ']') {
        m_diff->turn(code == '[' ? -1 : 1);
        m_details.goToFile(m_diff->file().path);
        return true;
    }
    if (code == 'l' || key.kind == KeyKind::right)
        return m_diff->shift(true);
    return (code == 'h' || key.kind == KeyKind::left) && m_diff->shift(false);
}

bool CommitPane::openDiff()
{
    const FileChange* file = m_diff ? nullptr : m_details.target().file;
    if (!file)
        return false;
    m_diff.emplace();
    m_diff->open(m_details.details(), static_cast<std::size_t>(file - m_details.details()->files.data()));
    m_diff->window().setHeight(m_height);
    return true;
}

bool CommitPane::closeDiff()
{
    const bool wasOpen = m_diff.has_value();
    m_diff.reset();
    return wasOpen;
}

void CommitPane::setHeight(std::size_t lines)
{
    m_height = lines;
    m_details.window().setHeight(lines);
    if (m_diff)
        m_diff->window().setHeight(lines);
}

cmStringT CommitPane::title() const
{
    if (m_diff)
        return m_diff->title();
    if (!details())
        return "";
    return details()->hash.isEmpty() ? cmStringT("working copy") : cmStringT(cmCat("commit ") + shortHash(details()->hash));
}

cmArray<cmArray<StyledText>> CommitPane::lines(std::size_t width, Symbols symbols, bool hasFocus) const
{
    return m_diff ? m_diff->lines(width, symbols, hasFocus) : m_details.lines(width, symbols, hasFocus);
}
