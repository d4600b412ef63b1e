#pragma once
// Histogram and cumulative distribution of Monte Carlo values.

#include <cstddef>
#include <vector>

namespace bm::trazel {

struct Histogram {
    std::vector<double> edges;  // bins + 1 edges, equal widths from the smallest to the largest value
    std::vector<int> counts;    // bin k holds edges[k] <= v < edges[k + 1]; the last bin also its upper edge
};

// The square-root rule, kept between 5 and 40 bins (and never more bins than values).
int automaticBinCount(std::size_t values);

// `bins` <= 0 chooses automatically. Equal values get one bin around them.
Histogram makeHistogram(const std::vector<double>& values, int bins);

struct CumulativePoint {
    double value;
    double fraction;  // share of the values at or below `value`
};

// The empirical distribution: the sorted values, the i-th at i / n.
std::vector<CumulativePoint> empiricalCumulative(std::vector<double> values);

struct Summary {
    std::size_t count = 0;
    double minimum = 0, maximum = 0, mean = 0, median = 0, standardDeviation = 0;
};

// Summary statistics as a reader of the plot expects them: the median of an
// even count is the mean of the two middle values; the standard deviation
// divides by n - 1 (0 for a single value).
Summary summarise(std::vector<double> values);

}  // namespace bm::trazel
