#pragma once

// POSIX only. Any thread.

/// The handle (pidfd) of the child of this process that has this number now. Returns -1 and sets errno on failure; ESRCH: there
/// is no such child, or the host has reaped it. The caller closes it.
int openChildHandle(int id);

/// Ends the child `leader`, which leads a session of its own, with its process group, the other groups of its session,
/// and its descendants in other sessions. A process that has left the session and whose parent has ended (a daemon that detached
/// itself) cannot be found. `handle` is the child's pidfd; nothing happens when the child has been reaped. Each process gets its
/// signal through a handle and is checked again before, so another one that has taken over its number gets none. The process
/// group has no handle: it gets its signal by number, right after a check that the child is not reaped; only a host that reaps it
/// between the two could make that number another group's. Does not wait, and throws nothing: where /proc cannot be read, or no
/// memory is left, it ends the process group alone.
void endProcessFamily(int handle, int leader) noexcept;

/// Ends all children of this process in that way. Only for a program of our own: in a host, other code has children too. Throws
/// std::bad_alloc.
void endAllChildFamilies();
/// The same for the children that one thread of this process has started; none where /proc does not list them by thread.
void endChildFamiliesOf(int thread);
