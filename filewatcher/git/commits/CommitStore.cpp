#include "filewatcher/git/commits/CommitStore.h"

#include "common/cmStringCatHelper.h"

#include <algorithm>

void CommitStore::addWorkingCopy()
{
    GitLogRecord record;
    record.subject = workingCopySubject;
    append(CommitIds::workingCopy, record);
}

bool CommitStore::add(const GitLogRecord& record)
{
    const std::uint32_t id = intern(record.hash);
    if (id == none || numberOf(id) != none)
        return false;
    append(id, record);
    return true;
}

void CommitStore::append(std::uint32_t id, const GitLogRecord& record)
{
    const cmROStringT subject = m_texts.keep(record.subject);
    Commit commit{id,
                  none,
                  none,
                  internAuthor(record.authorName, record.authorEmail),
                  record.time,
                  subject.data(),
                  static_cast<std::uint32_t>(subject.size())};
    for (cmROStringT parents = record.parents; !parents.empty();) {
        const std::uint32_t parent = intern(cmTakeUntil(parents, ' '));
        if (parent == none)
            continue;
        if (commit.firstParent == none) {
            commit.firstParent = parent;
            continue;
        }
        if (commit.otherParents == none) {
            commit.otherParents = static_cast<std::uint32_t>(m_otherParents.size());
            m_otherParents.push_back(0);
        }
        ++m_otherParents[commit.otherParents];
        m_otherParents.push_back(parent);
    }
    if (m_numbers.size() <= id)
        m_numbers.resize(m_ids.count(), none);
    m_numbers[id] = count();
    m_commits.push_back(commit);
}

std::uint32_t CommitStore::internAuthor(cmROStringT name, cmROStringT email)
{
    cmStringT key(name);
    key += '\0';
    key += email;
    const auto found = m_authorNumbers.find(key);
    if (found != m_authorNumbers.end())
        return found->second;
    const auto number = static_cast<std::uint32_t>(m_authors.size());
    const cmROStringT kept = m_texts.keep(key);
    m_authorNumbers.emplace(kept, number);
    m_authors.push_back({kept.substr(0, name.size()), kept.substr(name.size() + 1)});
    return number;
}

std::uint32_t CommitStore::find(cmROStringT digits) const
{
    if (digits.empty())
        return numberOf(CommitIds::workingCopy);
    std::uint32_t first = numberOf(m_ids.find(digits));
    for (const std::uint32_t id : m_ids.findShort(digits))
        first = std::min(first, numberOf(id));
    return first;
}

std::span<const std::uint32_t> CommitStore::otherParents(std::uint32_t number) const
{
    const std::uint32_t start = m_commits[number].otherParents;
    if (start == none)
        return {};
    return {m_otherParents.data() + start + 1, m_otherParents[start]};
}

void CommitStore::copy(std::uint32_t number, GitCommitInfo& info) const
{
    const Commit& commit = m_commits[number];
    info = GitCommitInfo();
    info.hash = hashText(commit.id);
    if (commit.firstParent != none)
        info.firstParent = hashText(commit.firstParent);
    for (const std::uint32_t parent : otherParents(number))
        info.otherParents.push_back(hashText(parent));
    const Author& author = m_authors[commit.author];
    info.authorName = author.name;
    info.authorEmail = author.email;
    if (commit.time != noCommitTime)
        info.date = GitDateTime::fromUnixTime(commit.time);
    info.subject = subject(number);
}
