#pragma once

#include "common/cmArray.h"
#include "common/cmDictionary.h"
#include "common/cmMutex.h"
#include "common/cmPath.h"
#include "txapi/txapi.h"

#include <optional>
#include <utility>

/// The version-control records, by path. Paths that name the same file share one record, under the spelling written
/// last. Any thread.
class VCRecords {
public:
    explicit VCRecords(cmPathStyle style = cmNativePathStyle) : m_style(style) {}

    std::optional<TXVCRECORD> find(cmROStringT path) const;
    void write(cmROStringT path, const TXVCRECORD& record);
    /// Forgets the records that `tool` wrote, and those without a tool.
    void clear(std::int32_t tool);
    /// All of them, ordered by path.
    cmArray<std::pair<cmStringT, TXVCRECORD>> all() const;

private:
    using Entry = std::pair<cmStringT, TXVCRECORD>;
    cmStringT keyOf(cmROStringT path) const;

    const cmPathStyle m_style;
    mutable cmMutex m_lock;
    cmDictionary<cmStringT, Entry> m_records CM_GUARDED_BY(m_lock);
};
