#pragma once

#include "common/cmArray.h"
#include "common/cmString.h"
#include "txapi/TXEXPORT.h"

#include <cstdint>

/// Handle of an editor variable; 0 is none.
using TXHVAR = std::int32_t;

namespace tamarin {

/// One container that an iterator walks, and its position there.
struct TMIteratorLevel {
    TXHVAR container = 0;
    std::int64_t next = 0;  ///< index of the next element
    cmStringT lastKey;      ///< key of the last returned element; null in an array and before the first element
};

/// An iterator over the editor's hash tables and arrays. It keeps a stack of levels, one for each nested container; the top
/// of the stack is the innermost container. The service txHvarNextElement advances the innermost level. A copy has a
/// position of its own. The iterator does not keep a container alive. For one thread at a time.
class TXMODULE_API TMIterator {
public:
    TMIterator();
    TMIterator(const TMIterator& other);
    ~TMIterator();
    TMIterator& operator=(const TMIterator& other);

    /// Returns to the start: removes every level but the outermost and puts that one before its first element.
    void reset();

    /// Adds a level that stands before the first element of `container`. Returns 0, or -1 when the handle is 0.
    std::int32_t pushStack(TXHVAR container);
    /// Removes the innermost level. Returns 0, or -1 when there is none.
    std::int32_t popStack();
    /// Removes all levels. Returns 0.
    std::int32_t clearStack();
    /// Replaces all levels by copies of those of `other`. Returns 0.
    std::int32_t copyStack(const TMIterator& other);

    /// The innermost level, owned by the iterator and valid until the stack changes; null when there is none.
    TMIteratorLevel* top();

private:
    cmArray<TMIteratorLevel> m_levels;
};

}  // namespace tamarin
