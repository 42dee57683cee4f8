#include "txhost/WaitProgress.h"

#include "common/cmStringCatHelper.h"
#include "txhost/Console.h"

#include <chrono>
#include <string>
#include <utility>

namespace {

constexpr std::uint32_t firstShownMs = 500;
constexpr std::uint32_t intervalMs = 250;

}  // namespace

WaitProgress::WaitProgress(cmStringT what) : m_what(std::move(what))
{
    setStopEvent(&m_stop);
    if (console::showsProgress())
        start();
}

WaitProgress::~WaitProgress()
{
    requestStop();
    join();
    console::showProgress("");
}

void WaitProgress::tell(cmStringT what)
{
    const cmMutexLock hold(m_lock);
    m_what = std::move(what);
}

std::int32_t WaitProgress::run()
{
    const auto start = std::chrono::steady_clock::now();
    for (std::uint32_t pause = firstShownMs; m_stop.wait(pause) == cmWaitTimeout; pause = intervalMs) {
        const auto time = std::chrono::duration_cast<std::chrono::seconds>(std::chrono::steady_clock::now() - start);
        const cmMutexLock hold(m_lock);
        console::showProgress(cmStringT(cmCat(m_what) + ", " + std::to_string(time.count()) + " s"));
    }
    return 0;
}
