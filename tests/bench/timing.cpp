#include "timing.h"

#include <time.h>

#include <algorithm>
#include <cstdio>

namespace quenchly::bench {

double threadMicroseconds()
{
    timespec time;
    ::clock_gettime(CLOCK_THREAD_CPUTIME_ID, &time);
    return static_cast<double>(time.tv_sec) * 1e6 + static_cast<double>(time.tv_nsec) / 1e3;
}

Spread spreadOf(std::vector<double> values)
{
    std::ranges::sort(values);
    const auto at = [&](std::size_t quarters) { return values[(values.size() - 1) * quarters / 4]; };
    return {.lowerQuartile = at(1), .median = at(2), .upperQuartile = at(3), .lowest = at(0), .highest = at(4)};
}

void printMilliseconds(const char* what, const std::vector<double>& values)
{
    if (values.empty())
        return;
    const Spread spread = spreadOf(values);
    std::printf("  %-40s %7.1f ms (%.1f to %.1f)\n", what, spread.median, spread.lowest, spread.highest);
}

}  // namespace quenchly::bench
