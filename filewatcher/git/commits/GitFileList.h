#pragma once

#include "common/cmArray.h"
#include "common/cmString.h"

#include <atomic>
#include <memory>
#include <utility>

/// A list of file names that is allocated on first use, because most commits have none. Several threads may make the first use at
/// once; other changes are for one thread at a time.
class GitFileList {
public:
    GitFileList() = default;
    GitFileList(const GitFileList& other)
    {
        if (const cmArray<cmStringT>* names = other.m_names.load(std::memory_order_acquire))
            m_names = new cmArray<cmStringT>(*names);
    }
    GitFileList(GitFileList&& other) noexcept : m_names(other.m_names.exchange(nullptr)) {}
    ~GitFileList() { delete m_names.load(); }
    GitFileList& operator=(GitFileList other) noexcept
    {
        other.m_names = m_names.exchange(other.m_names.load());
        return *this;
    }

    bool isEmpty() const
    {
        const cmArray<cmStringT>* names = m_names.load(std::memory_order_acquire);
        return !names || names->empty();
    }

    cmArray<cmStringT>& names() const
    {
        cmArray<cmStringT>* names = m_names.load(std::memory_order_acquire);
        if (names)
            return *names;
        auto made = std::make_unique<cmArray<cmStringT>>();
        if (m_names.compare_exchange_strong(names, made.get(), std::memory_order_acq_rel))
            return *made.release();
        return *names;
    }

private:
    mutable std::atomic<cmArray<cmStringT>*> m_names{nullptr};
};
