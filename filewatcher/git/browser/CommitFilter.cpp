#include "filewatcher/git/browser/CommitFilter.h"

#include "common/cmHexDigits.h"

#include <cstddef>

namespace {

/// Whether `text` contains `lowerText`, without regard to ASCII case. `lowerText` is in lower case and not empty.
bool occursIn(cmROStringT text, cmROStringT lowerText)
{
    const char first = lowerText.front();
    const char upperFirst = first >= 'a' && first <= 'z' ? static_cast<char>(first - 'a' + 'A') : first;
    for (std::size_t i = 0; i + lowerText.size() <= text.size(); ++i) {
        if ((text[i] == first || text[i] == upperFirst) && cmEqualIgnoringCase(text.substr(i, lowerText.size()), lowerText))
            return true;
    }
    return false;
}

/// Searches hashes for one text.
class HashMatcher {
public:
    HashMatcher(const CommitStore& store, cmROStringT lowerText)
        : m_store(store), m_text(lowerText),
          m_possible(lowerText.size() <= CommitIds::mostDigits && lowerText.find_first_not_of(cmHexDigits) == cmROStringT::npos)
    {
    }
    bool matches(std::uint32_t id) const
    {
        if (!m_possible)
            return false;
        char place[CommitIds::mostDigits];
        return m_store.writeHash(id, place).find(m_text) != cmROStringT::npos;
    }

private:
    const CommitStore& m_store;
    cmROStringT m_text;
    bool m_possible;
};

}  // namespace

cmArray<std::uint32_t> filterCommits(const CommitStore& store, cmROStringT text, std::uint32_t first)
{
    const cmStringT lowerText = cmLowerAscii(text);
    cmArray<bool> authorMatches;  // by author: there are far fewer of them than commits
    for (const CommitStore::Author& author : store.authors())
        authorMatches.push_back(text.empty() || occursIn(author.name, lowerText) || occursIn(author.email, lowerText));
    const HashMatcher hash(store, lowerText);
    cmArray<std::uint32_t> found;
    for (std::uint32_t number = first; number < store.count(); ++number) {
        if (authorMatches[store.author(number)] || occursIn(store.subject(number), lowerText) || hash.matches(store.idOf(number)))
            found.push_back(number);
    }
    return found;
}
