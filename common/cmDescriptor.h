#pragma once

/// POSIX only. Moves a new descriptor above the standard streams: in a host without standard streams it may be one of theirs, and
/// what the host's own code writes to its streams would go there. The result is close-on-exec; -1 on failure, with the descriptor
/// closed. Any thread.
int cmAboveStandardStreams(int descriptor);
