#pragma once

#include "common/cmMutex.h"

#include <cstddef>
#include <deque>
#include <iterator>
#include <utility>

/// First-in-first-out queue of values. Any thread may call any operation, and each is atomic. An iterator holds the lock from
/// its creation to its destruction, so other threads wait meanwhile.
template <class T, class Mutex = cmMutex>
class cmQueue {
public:
    /// Iterates from the head of the queue and holds the lock during its whole lifetime.
    class const_iterator {
    public:
        using iterator_category = std::input_iterator_tag;
        using value_type = T;
        using difference_type = std::ptrdiff_t;
        using pointer = const T*;
        using reference = const T&;

        const_iterator(const cmQueue& queue, std::size_t index) CM_NO_THREAD_SAFETY_ANALYSIS : m_queue(&queue), m_index(index)
        {
            m_queue->m_lock.lock();
        }
        const_iterator(const const_iterator& other) : const_iterator(*other.m_queue, other.m_index) {}
        const_iterator& operator=(const const_iterator&) = delete;
        ~const_iterator() CM_NO_THREAD_SAFETY_ANALYSIS { m_queue->m_lock.unlock(); }

        const T& operator*() const CM_NO_THREAD_SAFETY_ANALYSIS { return m_queue->m_items[m_index]; }
        const T* operator->() const { return &**this; }
        const_iterator& operator++()
        {
            ++m_index;
            return *this;
        }
        bool operator==(const const_iterator& other) const { return m_index == other.m_index; }

    private:
        const cmQueue* m_queue;
        std::size_t m_index;
    };

    void push(T item)
    {
        const Hold hold(m_lock);
        m_items.push_back(std::move(item));
    }

    /// Moves the head into `item`. Returns false when the queue is empty.
    bool pop(T& item)
    {
        const Hold hold(m_lock);
        if (m_items.empty())
            return false;
        item = std::move(m_items.front());
        m_items.pop_front();
        return true;
    }

    /// Removes all items and returns them, the head first.
    std::deque<T> takeAll()
    {
        const Hold hold(m_lock);
        return std::exchange(m_items, {});
    }

    bool isEmpty() const
    {
        const Hold hold(m_lock);
        return m_items.empty();
    }

    const_iterator begin() const { return const_iterator(*this, 0); }
    const_iterator end() const CM_NO_THREAD_SAFETY_ANALYSIS
    {
        const Hold hold(m_lock);
        return const_iterator(*this, m_items.size());
    }

private:
    using Hold = cmScopedLock<Mutex>;

    mutable Mutex m_lock;
    std::deque<T> m_items CM_GUARDED_BY(m_lock);
};
