#pragma once

#include "filewatcher/status/VCStatusThread.h"

#include <array>
#include <cstdint>

/// One kind of status thread, for functions that serve several tools. There is at most one thread of each kind.
struct StatusThreadKind {
    const TXVCTOOL& tool;
    bool readsSettingsOnInit;  ///< filewatcherInitType serves it
    bool takesContextFlag;     ///< its watch entries carry the editor's context flag
    /// The thread; when there is none it is created if `create` holds, else the result is null.
    VCStatusThread* (*instance)(bool create);
    /// Stops the thread, waits without limit until it has ended, and destroys it.
    void (*stopInstance)();
};

// All that follows is for the editor's thread.

/// The kinds in the order in which the bits of a type mask are looked at: Subversion, Git, Perforce.
const std::array<StatusThreadKind, 3>& statusThreadKinds();
/// The kind for a watch type, first or second; null for any other number.
const StatusThreadKind* statusThreadOfType(std::int32_t type);

/// Stops and destroys all status threads, in the order Git, Subversion, Perforce; returns when they have ended.
void stopStatusThreads();
/// Suspends or resumes all status threads, those that are created later included. Waits for nothing.
void suspendStatusThreads(bool suspended);
/// Whether the status threads are suspended.
bool areStatusThreadsSuspended();
