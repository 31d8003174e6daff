#pragma once

#include <vector>

namespace quenchly::bench {

/// Processor time of the calling thread in microseconds.
double threadMicroseconds();

/// What `work` costs the calling thread, in microseconds of processor time.
template <typename Work>
double cost(const Work& work)
{
    const double start = threadMicroseconds();
    work();
    return threadMicroseconds() - start;
}

struct Spread {
    double lowerQuartile;
    double median;
    double upperQuartile;
    double lowest;
    double highest;
};

/// `values` must not be empty.
Spread spreadOf(std::vector<double> values);

/// Prints the median and the range of milliseconds as a line; nothing without values.
void printMilliseconds(const char* what, const std::vector<double>& values);

}  // namespace quenchly::bench
