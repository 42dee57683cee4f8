#pragma once

#include "common/cmDictionary.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <utility>

/// Maps handles to pointers. Handles are assigned in ascending order, so the table consists of pages; a page exists while it
/// holds a pointer. Lookup takes constant time, and no operation takes longer than filling a page.
template <class Pointer>
class HandleTable {
public:
    std::size_t count() const { return m_count; }

    /// The pointer of `handle`; null when there is none.
    const Pointer& find(std::int32_t handle) const
    {
        static const Pointer none{};
        const auto page = m_pages.find(pageOf(handle));
        return page == m_pages.end() ? none : page->second->slots[slotOf(handle)];
    }

    /// `handle` must be 0 or more and unused; `pointer` must not be null.
    void insert(std::int32_t handle, Pointer pointer)
    {
        std::unique_ptr<Page>& page = m_pages[pageOf(handle)];
        if (!page)
            page = std::make_unique<Page>();
        page->slots[slotOf(handle)] = std::move(pointer);
        ++page->used;
        ++m_count;
    }

    /// Does nothing when `handle` has no pointer.
    void erase(std::int32_t handle)
    {
        if (!find(handle))
            return;
        const auto page = m_pages.find(pageOf(handle));
        page->second->slots[slotOf(handle)] = Pointer{};
        --m_count;
        if (--page->second->used == 0)
            m_pages.erase(page);
    }

private:
    static constexpr std::size_t pageSize = 4096;
    struct Page {
        std::array<Pointer, pageSize> slots{};
        std::size_t used = 0;
    };

    static std::size_t pageOf(std::int32_t handle) { return static_cast<std::size_t>(handle) / pageSize; }
    static std::size_t slotOf(std::int32_t handle) { return static_cast<std::size_t>(handle) % pageSize; }

    cmDictionary<std::size_t, std::unique_ptr<Page>> m_pages;
    std::size_t m_count = 0;
};
