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
    case Aim::none: return true;
    }
    return false;
}

Row makeRow(const std::string& what, const std::string& unit, double ours, double reference, Aim aim, double limit, int rounds)
{
    Row row;
    row.what = what;
    row.unit = unit;
    row.ours = ours;
    row.reference = reference;
    row.ratio = reference == 0 ? 0 : ours / reference;
    row.aim = aim;
    row.limit = limit;
    row.rounds = rounds;
    return row;
}

Row makeRow(const std::string& what, const std::string& unit, const Samples& samples, Aim aim, double limit)
{
    return makeRow(what, unit, median(samples.ours), median(samples.reference), aim, limit,
                   static_cast<int>(samples.ours.size()));
}

Row makeGrowthRow(const std::string& what, const std::function<double(int files)>& measure, int rounds)
{
    constexpr int small = 1000;
    constexpr int middle = 10000;
    constexpr int large = 50000;
    const double times[] = {measure(small), measure(middle), measure(large)};
    constexpr double microseconds = 1000;
    return makeRow(what, "us", (times[2] - times[1]) * microseconds / (large - middle),
                   (times[1] - times[0]) * microseconds / (middle - small), Aim::ratioAtMost, 1.2, rounds);
}

Row makeSlopeRow(const std::string& what, const std::function<Samples(int files)>& measure, int few, int many, double limit)
{
    const Samples less = measure(few);
    const Samples more = measure(many);
    const auto slope = [&](const std::vector<double>& smaller, const std::vector<double>& larger) {
        constexpr double microseconds = 1000;
        return (percentile(larger, 0) - percentile(smaller, 0)) * microseconds / (many - few);
    };
    return makeRow(what, "us", slope(less.ours, more.ours), slope(less.reference, more.reference), Aim::ratioAtMost, limit,
                   static_cast<int>(less.ours.size()));
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

double elapsedMilliseconds(const std::function<void()>& work)
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

double fastest(int rounds, const std::function<double()>& measure)
{
    double best = measure();
    for (int round = 1; round < rounds; ++round)
        best = std::min(best, measure());
    return best;
}
