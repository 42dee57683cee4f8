#pragma once

#include "common/cmArray.h"
#include "common/cmMutex.h"
#include "common/cmPath.h"
#include "txapi/txapi.h"

#include <optional>
#include <unordered_map>
#include <utility>

/// The version-control records by path. On Windows paths that differ in case alone share one record, which keeps the spelling of
/// the last write. Any thread.
class VCRecords {
public:
    /// `style` decides whether paths are compared with case; tests choose it.
    explicit VCRecords(cmPathStyle style = cmNativePathStyle) : m_records(0, SamePath{style}, SamePath{style}) {}

    /// A copy of the record; nothing when there is none.
    std::optional<TXVCRECORD> find(cmROStringT path) const;
    void write(cmROStringT path, const TXVCRECORD& record);
    /// Removes the records that `tool` wrote; with 0 those without a tool.
    void clear(std::int32_t tool);
    /// Copies of the records whose status, local or repository, has changed since the last call, in no order. A record that was
    /// removed is not among them.
    cmArray<std::pair<cmStringT, TXVCRECORD>> takeChanged();
    /// Copies of all records, ordered by path.
    cmArray<std::pair<cmStringT, TXVCRECORD>> all() const;

private:
    /// Hash and equality of paths; both ignore ASCII case for Windows paths.
    struct SamePath {
        using is_transparent = void;
        cmPathStyle style;
        std::size_t operator()(cmROStringT path) const;
        bool operator()(cmROStringT a, cmROStringT b) const;
    };

    struct Entry {
        TXVCRECORD record;
        bool isInChanged = false;  ///< whether m_changed holds it
    };
    using Entries = std::unordered_map<cmStringT, Entry, SamePath, SamePath>;

    mutable cmMutex m_lock;
    Entries m_records CM_GUARDED_BY(m_lock);
    cmArray<Entries::pointer> m_changed CM_GUARDED_BY(m_lock);
};
