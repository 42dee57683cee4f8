#pragma once

#include "common/cmArray.h"
#include "common/cmMutex.h"
#include "common/cmPath.h"
#include "txapi/txapi.h"

#include <optional>
#include <unordered_map>
#include <utility>

/// The version-control records, by path. Paths that name the same file share one record, under the spelling written
/// last. Any thread.
class VCRecords {
public:
    explicit VCRecords(cmPathStyle style = cmNativePathStyle) : m_records(0, SamePath{style}, SamePath{style}) {}

    std::optional<TXVCRECORD> find(cmROStringT path) const;
    void write(cmROStringT path, const TXVCRECORD& record);
    /// Forgets the records that `tool` wrote, and those without a tool.
    void clear(std::int32_t tool);
    /// All of them, ordered by path.
    cmArray<std::pair<cmStringT, TXVCRECORD>> all() const;

private:
    /// Hash and equality of paths that may name the same file in another case.
    struct SamePath {
        using is_transparent = void;
        cmPathStyle style;
        std::size_t operator()(cmROStringT path) const;
        bool operator()(cmROStringT a, cmROStringT b) const;
    };

    mutable cmMutex m_lock;
    std::unordered_map<cmStringT, TXVCRECORD, SamePath, SamePath> m_records CM_GUARDED_BY(m_lock);
};
