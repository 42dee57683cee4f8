#pragma once

#include "common/cmString.h"

#include <functional>

/// The result of one step of the tour.
struct TourOutcome {
    bool ok;
    cmStringT detail;     ///< what the step found; may be empty
    bool isShown = true;  ///< to people, too; not a long path
};

/// Runs the steps of the tour and prints their results and times. After Ctrl-C it runs and prints nothing more.
class TourReport {
public:
    explicit TourReport(bool json) : m_json(json) {}

    /// Begins the steps of a feature, and tells why it matters. `feature` must outlive them.
    void part(cmROStringT feature, cmROStringT reason);
    void step(cmROStringT what, const std::function<TourOutcome()>& body);
    /// Ends the tour. Returns the exit code.
    int end() const;

private:
    const bool m_json;
    cmROStringT m_feature;
    int m_failures = 0;
};
