#include "filewatcher/reload/FileDateThread.h"

#include "filewatcher/reload/FileDateData.h"

#include <optional>
#include <utility>

std::int32_t FileDateThread::run()
{
    while (!stopRequested()) {
        m_data.waitForWork();
        FILE_DATE_THREAD_INPUT_INFO request;
        while (!stopRequested() && m_data.takeRequest(request)) {
            if (!answer(std::move(request.fileName)))
                return 0;
        }
    }
    return 0;
}

/// Returns false when the read was given up. When there is no memory for a date, its file has no answer, and the others go on.
bool FileDateThread::answer(cmStringT fileName)
{
    try {
        return m_data.endRead(*this, readFileDate(std::move(fileName)));
    } catch (...) {
        return m_data.endRead(*this, std::nullopt);
    }
}
