#include "txhost/InterruptWatch.h"

#include "common/cmStringCatHelper.h"
#include "txhost/Console.h"
#include "txhost/HostSystem.h"
#include "txhost/WaitProgress.h"

#include <utility>

namespace {

constexpr std::uint32_t checkIntervalMs = 20;

}  // namespace

InterruptWatch::InterruptWatch(cmStringT path) : m_path(std::move(path))
{
    setStopEvent(&m_stop);
    if (start() == 0)
        console::catchInterrupts();
}

InterruptWatch::~InterruptWatch()
{
    console::releaseInterrupts();
    requestStop();
    join();
}

void InterruptWatch::check() const
{
    if (console::wasInterrupted())
        throw HostError({Failure::stopped, "interrupted", m_path});
}

std::int32_t InterruptWatch::run()
{
    while (m_stop.wait(checkIntervalMs) == cmWaitTimeout) {
        if (console::wasInterrupted())
            endChildProcesses();  // again and again: the module may start another tool
    }
    return 0;
}

std::int32_t callInterruptibly(Host& host, const cmStringT& path, cmROStringT name, const cmArray<CallArgument>& arguments)
{
    const InterruptWatch interrupts(path);
    const WaitProgress progress(cmCat(gitTool.name) + " in " + path);
    const std::int32_t result = host.call(name, arguments);
    interrupts.check();
    return result;
}
