#include "filewatcher/reload/FileDateThread.h"

#include "filewatcher/reload/FileDateData.h"

#include <utility>

std::int32_t FileDateThread::run()
{
    while (!stopRequested()) {
        m_data.waitForWork();
        FILE_DATE_THREAD_INPUT_INFO request;
        while (!stopRequested() && m_data.takeRequest(request)) {
            if (!m_data.endRead(*this, readFileDate(std::move(request.fileName))))
                return 0;
        }
    }
    return 0;
}
