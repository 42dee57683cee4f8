#include "common/cmDescriptor.h"

#include <fcntl.h>
#include <unistd.h>

int cmAboveStandardStreams(int descriptor)
{
    if (descriptor > STDERR_FILENO)
        return descriptor;
    const int moved = fcntl(descriptor, F_DUPFD_CLOEXEC, STDERR_FILENO + 1);
    ::close(descriptor);
    return moved;
}
