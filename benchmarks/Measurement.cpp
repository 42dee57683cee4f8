#include "benchmarks/Measurement.h"

#include <algorithm>
#include <chrono>
#include <cmath>
#include <cstddef>
#include <utility>

bool Row::isMet() const
{
    switch (aim) {
    case Aim::ratioAtMost: return ratio <= limit;
    case Aim::ratioAtLeast: return ratio >= limit;
    case Aim::oursAtMost: return ours <= limit;
    }
    return false;
}

Row makeRow(const std::string& what, const std::string& unit, double ours, double reference)
{
    Row row;
    row.what = what;
    row.unit = unit;
    row.ours = ours;
    row.reference = reference;
    row.ratio = ours / reference;
    return row;
}

Samples interleave(int rounds, const std::function<double()>& ours, const std::function<double()>& reference)
{
    Samples samples;
    ours();
    reference();
    for (int round = 0; round < rounds; ++round) {
        samples.ours.push_back(ours());
        samples.reference.push_back(reference());
    }
    return samples;
}

double milliseconds(const std::function<void()>& work)
{
    const auto start = std::chrono::steady_clock::now();
    work();
    return std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now() - start).count();
}

double percentile(std::vector<double> values, double share)
{
    std::sort(values.begin(), values.end());
    const auto rank = static_cast<std::size_t>(std::ceil(share * static_cast<double>(values.size())));
    return values.at(std::max<std::size_t>(rank, 1) - 1);
}

double median(std::vector<double> values)
{
    return percentile(std::move(values), 0.5);
}
