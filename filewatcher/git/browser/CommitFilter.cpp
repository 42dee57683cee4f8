#include "filewatcher/git/browser/CommitFilter.h"

#include "common/cmHexDigits.h"

#include <cstddef>

namespace {

/// Searches texts for one text without regard to ASCII case. Looks for the rarest of its characters alone, because the library
/// finds a single byte many times faster than a loop does.
class TextMatcher {
public:
    /// `lowerText` is in lower case. Every text contains the empty one.
    explicit TextMatcher(cmROStringT lowerText) : m_text(lowerText)
    {
        if (lowerText.empty())
            return;
        constexpr cmROStringT byFrequency = " etaoinsrhldcumfpgwybvkxjqz";
        constexpr std::size_t ofOthers = 13;
        std::size_t rarest = 0;
        for (std::size_t place = 0; place < lowerText.size(); ++place) {
            const std::size_t known = byFrequency.find(lowerText[place]);
            const std::size_t rank = known == cmROStringT::npos ? ofOthers : known;
            if (rank >= rarest) {
                rarest = rank;
                m_place = place;
            }
        }
        m_lower = lowerText[m_place];
        m_upper = m_lower >= 'a' && m_lower <= 'z' ? static_cast<char>(m_lower - 'a' + 'A') : m_lower;
    }
    bool occursIn(cmROStringT text) const
    {
        if (m_text.empty() || text.size() < m_text.size())
            return m_text.empty();
        return occursAt(m_lower, text) || (m_upper != m_lower && occursAt(m_upper, text));
    }

private:
    /// Whether `text`, which is long enough, contains the text with `character` in its rarest place.
    bool occursAt(char character, cmROStringT text) const
    {
        text.remove_suffix(m_text.size() - m_place - 1);
        for (std::size_t found = m_place; (found = text.find(character, found)) != cmROStringT::npos; ++found) {
            if (cmEqualIgnoringCase({text.data() + found - m_place, m_text.size()}, m_text))
                return true;
        }
        return false;
    }

    cmROStringT m_text;
    std::size_t m_place = 0;  ///< of its rarest character
    char m_lower = 0;
    char m_upper = 0;
};

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
    const TextMatcher wanted(lowerText);
    cmArray<bool> authorMatches;  // by author: there are far fewer of them than commits
    for (const CommitStore::Author& author : store.authors())
        authorMatches.push_back(wanted.occursIn(author.name) || wanted.occursIn(author.email));
    const HashMatcher hash(store, lowerText);
    cmArray<std::uint32_t> found;
    for (std::uint32_t number = first; number < store.count(); ++number) {
        if (authorMatches[store.author(number)] || wanted.occursIn(store.subject(number)) || hash.matches(store.idOf(number)))
            found.push_back(number);
    }
    return found;
}
