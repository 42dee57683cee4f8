#pragma once

#include "common/cmArray.h"
#include "common/cmString.h"

#include <atomic>
#include <memory>
#include <utility>

/// File names that most owners do not have: the list is made with its first use. Several threads may use one for the first
/// time at once; otherwise it is a value like any other.
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
