#pragma once

#include "filewatcher/VCStatusThread.h"

/// Keeps the editor's per-file Perforce status. So far it has the settings and the life cycle of a status thread: a path
/// is taken from the queue and nothing is run for it.
class PerforceStatusThread : public VCStatusThread<PerforceStatusThread> {
public:
    static constexpr StatusTool tool{4, "_PerforceGetExePath", "def_perforce_update_interval", "def_perforce_show_file_status"};

private:
    friend class VCStatusThread<PerforceStatusThread>;
    PerforceStatusThread() = default;
    ~PerforceStatusThread() override = default;

    std::int32_t processEntry(const WatchEntry&) { return 0; }
    void listEmptied() {}
};
