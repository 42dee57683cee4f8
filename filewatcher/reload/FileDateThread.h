#pragma once

#include "common/cmString.h"
#include "common/cmThread.h"

class FileDateData;

/// Reads the dates that are requested from `data`, one after the other, until a stop is requested or a read was given up.
class FileDateThread : public cmThread {
public:
    /// `data` outlives the thread.
    explicit FileDateThread(FileDateData& data) : m_data(data) { setName("File Date Thread"); }

    std::int32_t run() override;

private:
    bool answer(cmStringT fileName);

    FileDateData& m_data;
};
