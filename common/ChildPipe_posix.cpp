#include "common/ChildPipe.h"

#include "common/cmDescriptor.h"
#include "common/cmStatusException.h"

#include <fcntl.h>
#include <poll.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>
#include <utility>

namespace {

constexpr std::uint32_t systemPipeSize = 65536;

/// Writes like ::write, but never raises SIGPIPE in the host when the child has closed its end.
ssize_t writeQuietly(int descriptor, const char* data, std::size_t count)
{
    sigset_t pipeSignal;
    sigset_t before;
    sigset_t pending;
    sigemptyset(&pipeSignal);
    sigaddset(&pipeSignal, SIGPIPE);
    sigpending(&pending);
    pthread_sigmask(SIG_BLOCK, &pipeSignal, &before);
    const ssize_t written = ::write(descriptor, data, count);
    const int error = errno;
    if (written < 0 && error == EPIPE && !sigismember(&pending, SIGPIPE)) {
        const timespec now{};
        sigtimedwait(&pipeSignal, nullptr, &now);
    }
    pthread_sigmask(SIG_SETMASK, &before, nullptr);
    errno = error;
    return written;
}

}  // namespace

void ChildPipe::closeEnd(std::intptr_t& end)
{
    if (end != none)
        ::close(static_cast<int>(std::exchange(end, none)));
}

void ChildPipe::create(bool toChild, std::uint32_t bufferSize)
{
    close();
    int ends[2];
    if (pipe2(ends, O_CLOEXEC) != 0)
        throw cmStatusException(cmStatusPipeFailed);
    const int readEnd = cmAboveStandardStreams(ends[0]);
    const int writeEnd = cmAboveStandardStreams(ends[1]);
    parentEnd = toChild ? writeEnd : readEnd;
    childEnd = toChild ? readEnd : writeEnd;
    if (readEnd < 0 || writeEnd < 0) {
        close();
        throw cmStatusException(cmStatusPipeFailed);
    }
    if (bufferSize != systemPipeSize)
        fcntl(writeEnd, F_SETPIPE_SZ, static_cast<int>(bufferSize));  // best effort
}

bool ChildPipe::dataAvailable()
{
    if (parentEnd == none || ended)
        return false;
    pollfd waiting{static_cast<int>(parentEnd), POLLIN, 0};
    const int ready = poll(&waiting, 1, 0);
    failed |= (ready < 0 && errno != EINTR) || (waiting.revents & POLLNVAL) != 0;
    if (ready != 1 || failed)
        return false;
    const bool data = (waiting.revents & POLLIN) != 0;
    ended = !data;
    return data;
}

int ChildPipe::read(void* buffer, std::uint32_t count)
{
    for (;;) {
        const ssize_t result = ::read(static_cast<int>(parentEnd), buffer, count);
        if (result >= 0 || errno != EINTR)
            return static_cast<int>(result);
    }
}

int ChildPipe::write(const void* data, std::uint32_t count)
{
    const char* next = static_cast<const char*>(data);
    for (std::uint32_t left = count; left > 0;) {
        const ssize_t written = writeQuietly(static_cast<int>(parentEnd), next, left);
        if (written < 0 && errno == EINTR)
            continue;
        if (written < 1)
            return -1;
        next += written;
        left -= static_cast<std::uint32_t>(written);
    }
    return static_cast<int>(count);
}
