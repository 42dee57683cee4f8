#include "filewatcher/status/SVNAnswer.h"

#include "common/cmStringCatHelper.h"
#include "filewatcher/bridge/XMLDocument.h"

namespace {

/// From this size on, whole entries are read. They are read in a fraction of the time in which the client fills its pipe.
constexpr std::size_t pieceSize = 65536;

// No attribute or text of the client holds a "<", so these stand only where an element begins or ends. The document element and
// the target, which the head opens, are closed behind each piece.
constexpr cmROStringT targetEnd = "</target>";
constexpr cmROStringT entryBegin = "<entry";
constexpr cmROStringT entryEnd = "</entry>";
constexpr cmROStringT pieceEnd = "</target></status>";

bool declaresDocumentType(cmROStringT document)
{
    // The "<" in front of it is looked at last: it stands everywhere, which would slow the search.
    constexpr cmROStringT declaration = "!DOCTYPE";
    std::size_t found = document.find(declaration);
    while (found != cmROStringT::npos && !document.substr(0, found).ends_with('<'))
        found = document.find(declaration, found + 1);
    return found != cmROStringT::npos;
}

}  // namespace

void SVNAnswer::append(cmROStringT bytes)
{
    if (!m_problem.isNull())
        return;
    m_text += bytes;
    if (m_text.length() < pieceSize || !m_isDivisible)
        return;
    if (m_head.isNull())
        findHead();
    if (m_isDivisible)
        readWholeEntries();
}

void SVNAnswer::finish()
{
    if (m_problem.isNull())
        read(cmCat(m_head) + m_text);
    m_text = {};
}

void SVNAnswer::findHead()
{
    const std::size_t size = m_text.view().find(entryBegin);
    m_isDivisible = size != cmROStringT::npos && m_text.view().substr(0, size).find(targetEnd) == cmROStringT::npos;
    if (!m_isDivisible)
        return;
    m_head = m_text.view().substr(0, size);
    m_text = m_text.view().substr(size);
}

/// Reads the entries that are complete. Those behind the end of the target are not for us, so the rest stays in one piece then.
void SVNAnswer::readWholeEntries()
{
    m_isDivisible = m_text.view().find(targetEnd) == cmROStringT::npos;
    const std::size_t last = m_text.view().rfind(entryEnd);
    if (!m_isDivisible || last == cmROStringT::npos)
        return;
    const std::size_t size = last + entryEnd.size();
    read(cmCat(m_head) + m_text.view().substr(0, size) + pieceEnd);
    m_text = m_text.view().substr(size);
}

void SVNAnswer::read(const cmStringT& text)
{
    if (declaresDocumentType(text)) {  // the client writes no entities of its own
        m_problem = "the client's answer declares a document type";
        return;
    }
    XMLDocument document(text);
    if (!document.isLoaded())
        m_problem = "the client's answer is incomplete";
    for (const std::int32_t node : document.select("/status/target/entry"))
        m_entries.push_back(readSvnEntry(document, node));
    m_serverAnswered = !document.select("/status/target/against").empty();
    document.close();
}
