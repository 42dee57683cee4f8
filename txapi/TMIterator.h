#pragma once

#include "common/cmArray.h"
#include "common/cmString.h"
#include "txapi/TXEXPORT.h"

#include <cstdint>

/// Handle of an editor variable; 0 is none.
using TXHVAR = std::int32_t;

namespace tamarin {

/// One container that an iterator walks, and how far it is.
struct TMIteratorLevel {
    TXHVAR container = 0;
    std::int64_t next = 0;  ///< index of the element that comes next
    cmStringT lastKey;      ///< key of the element handed out last; null in an array and at the start
};

/// Walks the editor's hash tables and arrays, nested ones too: each pushed level is a container inside the one
/// below it. The editor's service txHvarNextElement moves the innermost level on. Copies walk on independently.
class TXMODULE_API TMIterator {
public:
    TMIterator();
    TMIterator(const TMIterator& other);
    ~TMIterator();
    TMIterator& operator=(const TMIterator& other);

    /// Back to the start: every level but the outermost is left, and that one begins anew.
    void reset();

    /// Begins to walk `container`, inside the one walked so far. 0, or -1 when it is no handle.
    std::int32_t pushStack(TXHVAR container);
    /// Leaves the innermost container. 0, or -1 when there is none.
    std::int32_t popStack();
    /// Leaves them all. 0.
    std::int32_t clearStack();
    /// Takes over the levels of `other`. 0.
    std::int32_t copyStack(const TMIterator& other);

    /// The innermost level; null when there is none.
    TMIteratorLevel* top();

private:
    cmArray<TMIteratorLevel> m_levels;
};

}  // namespace tamarin
