#pragma once

// POSIX only. Any thread.

/// The handle (pidfd) of the process that has this number now, as the C library in use declares no usable function for it.
/// Returns -1 and sets errno on failure. The caller closes it.
int openProcessHandle(int id);

/// Ends the child `leader`, which leads a session of its own, with its process group, the other groups of its session,
/// and its descendants in other sessions. A process that has left the session and whose parent has ended (a daemon that detached
/// itself) cannot be found. `handle` is the child's pidfd; the child must not be reaped yet. Each process is checked again before
/// it gets a signal, so another one that has taken over its number gets none. Does not wait, and throws nothing: where /proc
/// cannot be read, or no memory is left, it ends the process group alone.
void endProcessFamily(int handle, int leader) noexcept;

/// Ends all children of this process in that way. Only for a program of our own: in a host, other code has children too. Throws
/// std::bad_alloc.
void endAllChildFamilies();
