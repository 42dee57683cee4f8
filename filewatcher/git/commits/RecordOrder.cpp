#include "filewatcher/git/commits/RecordOrder.h"

#include "common/CommandLine.h"

#include <algorithm>
#include <functional>
#include <numeric>

namespace {

constexpr std::uint32_t isPlaced = 0xFFFFFFFF;

}  // namespace

bool keepsUsualOrder(cmROStringT logRestriction)
{
    for (const cmStringT& argument : splitArguments(logRestriction)) {
        if (argument == "--")
            break;  // paths follow
        if (argument == "--reverse" || argument == "-g" || argument == "--walk-reflogs"
            || argument.view().starts_with("--no-walk"))
            return false;
    }
    return true;
}

void RecordOrder::keepTexts()
{
    while (m_texts.size() < m_held.size()) {
        GitLogRecord& record = m_held[m_texts.size()];
        cmROStringT* const texts[] = {&record.hash, &record.parents, &record.authorEmail, &record.authorName, &record.subject};
        std::size_t size = 0;
        for (const cmROStringT* text : texts)
            size += text->size();
        char* place = m_texts.emplace_back(std::make_unique_for_overwrite<char[]>(size)).get();
        for (cmROStringT* text : texts) {
            *text = {place, text->copy(place, text->size())};
            place += text->size();
        }
    }
}

void RecordOrder::forget()
{
    m_held.clear();
    m_texts.clear();
}

std::uint32_t RecordOrder::firstHeld(cmROStringT hash) const
{
    const auto found = std::lower_bound(m_byHash.begin(), m_byHash.end(), hash,
                                        [this](std::uint32_t index, cmROStringT wanted) { return m_held[index].hash < wanted; });
    return found != m_byHash.end() && m_held[*found].hash == hash ? *found : static_cast<std::uint32_t>(m_held.size());
}

template <class Use>
void RecordOrder::forHeldParents(std::uint32_t index, const Use& use) const
{
    if (firstHeld(m_held[index].hash) != index)
        return;  // a repeated record is no commit of its own
    for (cmROStringT parents = m_held[index].parents; !parents.empty();) {
        const std::uint32_t parent = firstHeld(cmTakeUntil(parents, ' '));
        if (parent < m_held.size() && parent != index)
            use(parent);
    }
}

const cmArray<std::uint32_t>& RecordOrder::placed()
{
    const auto count = static_cast<std::uint32_t>(m_held.size());
    m_byHash.resize(count);
    std::iota(m_byHash.begin(), m_byHash.end(), 0u);
    std::sort(m_byHash.begin(), m_byHash.end(), [this](std::uint32_t one, std::uint32_t other) {
        const int order = m_held[one].hash.compare(m_held[other].hash);
        return order != 0 ? order < 0 : one < other;
    });
    m_waiting.assign(count, 0);
    for (std::uint32_t index = 0; index < count; ++index) {
        if (firstHeld(m_held[index].hash) != index)
            m_waiting[index] = 1;  // for ever: it is taken behind the first one, when nothing else can be
        forHeldParents(index, [this](std::uint32_t parent) { ++m_waiting[parent]; });
    }
    m_ready.clear();
    for (std::uint32_t index = 0; index < count; ++index) {
        if (m_waiting[index] == 0)
            m_ready.push_back(index);
    }
    m_placed.clear();
    for (std::uint32_t earliest = 0; m_placed.size() < count;) {
        std::uint32_t next = 0;
        if (!m_ready.empty()) {
            std::pop_heap(m_ready.begin(), m_ready.end(), std::greater<>());
            next = m_ready.back();
            m_ready.pop_back();
        } else {  // commits that are their own ancestors, or a repeated one
            while (m_waiting[earliest] == isPlaced)
                ++earliest;
            next = earliest;
        }
        m_waiting[next] = isPlaced;
        m_placed.push_back(next);
        forHeldParents(next, [this](std::uint32_t parent) {
            if (m_waiting[parent] == isPlaced || --m_waiting[parent] != 0)
                return;
            m_ready.push_back(parent);
            std::push_heap(m_ready.begin(), m_ready.end(), std::greater<>());
        });
    }
    return m_placed;
}
