#pragma once

#include "filewatcher/VCStatusThread.h"

/// Keeps the editor's per-file Subversion status. So far it has the settings and the life cycle of a status thread: a path
/// is taken from the queue and nothing is run for it.
class SVNStatusThread : public VCStatusThread<SVNStatusThread> {
public:
    static constexpr StatusTool tool{1, "_SVNGetExePath", "def_svn_update_interval", "def_svn_show_file_status"};

private:
    friend class VCStatusThread<SVNStatusThread>;
    SVNStatusThread() = default;
    ~SVNStatusThread() override = default;

    std::int32_t processEntry(const WatchEntry&) { return 0; }
    void listEmptied() {}
};
