#pragma once

#include "benchmarks/Measurement.h"

#include <string>

/// Prints the rows as they come, as a table or as one JSON object a line.
class Report {
public:
    explicit Report(bool json);
    void print(const Row& row) const;
    static void printFailure(const std::string& what, const std::string& reason);

private:
    bool m_json;
};
