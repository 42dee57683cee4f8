#pragma once

#include <chrono>

/// POSIX only. The children whose records were closed before they could be reaped. Each is known by its pidfd, which this list
/// owns. Any thread. Unloading the module drops the list: the pidfds left on it stay open, and their children unreaped once
/// ended, until the host ends.
namespace UnreapedChildren {

/// Makes room for one more child, so that `reapOrKeep` needs no memory. Call it once before each start. Throws std::bad_alloc.
void reserve();
/// Takes back `reserve`: the start failed.
void cancel() noexcept;
/// Reaps the child, for which it waits at most `limit`, or keeps it on the list. Takes over `handle`; negative when the host has
/// reaped the child. Call it once for each `reserve`.
void reapOrKeep(int handle, bool terminated, std::chrono::milliseconds limit) noexcept;

}  // namespace UnreapedChildren
