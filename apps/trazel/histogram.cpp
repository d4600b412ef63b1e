#include "apps/trazel/histogram.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <cstdlib>

namespace bm::trazel {

namespace {

// Edges such as 0.1 + 2 * 0.1 carry float dust (0.30000000000000004) that
// would show in labels and exports; twelve digits keep them exact enough.
double tidy(double v) {
    char buffer[32];
    std::snprintf(buffer, sizeof buffer, "%.12g", v);
    return std::strtod(buffer, nullptr);
}

}  // namespace

int automaticBinCount(std::size_t values) {
    if (values == 0) return 1;
    const int rule = static_cast<int>(std::lround(std::sqrt(static_cast<double>(values))));
    return std::clamp(rule, std::min<int>(5, static_cast<int>(values)), 40);
}

Histogram makeHistogram(const std::vector<double>& values, int bins) {
    Histogram h;
    if (values.empty()) return h;
    const auto [lowIt, highIt] = std::minmax_element(values.begin(), values.end());
    double low = *lowIt, high = *highIt;
    if (bins <= 0) bins = automaticBinCount(values.size());
    if (high == low) {
        const double half = low != 0 ? std::fabs(low) * 0.05 : 0.5;
        low -= half;
        high += half;
        bins = 1;
    }
    const double width = (high - low) / bins;
    for (int k = 0; k <= bins; ++k) h.edges.push_back(k == bins ? high : tidy(low + k * width));
    h.counts.assign(static_cast<std::size_t>(bins), 0);
    for (double v : values) {
        const int k = std::clamp(static_cast<int>(std::floor((v - low) / width)), 0, bins - 1);
        ++h.counts[static_cast<std::size_t>(k)];
    }
    return h;
}

std::vector<CumulativePoint> empiricalCumulative(std::vector<double> values) {
    std::sort(values.begin(), values.end());
    std::vector<CumulativePoint> points;
    const double n = static_cast<double>(values.size());
    for (std::size_t i = 0; i < values.size(); ++i) points.push_back({values[i], static_cast<double>(i + 1) / n});
    return points;
}

Summary summarise(std::vector<double> values) {
    Summary s;
    s.count = values.size();
    if (values.empty()) return s;
    std::sort(values.begin(), values.end());
    s.minimum = values.front();
    s.maximum = values.back();
    const std::size_t n = values.size();
    s.median = n % 2 ? values[n / 2] : 0.5 * (values[n / 2 - 1] + values[n / 2]);
    double sum = 0;
    for (double v : values) sum += v;
    s.mean = sum / static_cast<double>(n);
    if (n > 1) {
        double squares = 0;
        for (double v : values) squares += (v - s.mean) * (v - s.mean);
        s.standardDeviation = std::sqrt(squares / static_cast<double>(n - 1));
    }
    return s;
}

}  // namespace bm::trazel
