#pragma once
// Axis scales: tick positions at 1, 2 or 5 times a power of ten, their texts,
// and the contour levels built the same way.

#include <string>
#include <vector>

namespace bm::trazel {

struct Ticks {
    std::vector<double> values;
    double step = 1;
};

// Ticks inside [low, high], about `count` of them.
Ticks niceTicks(double low, double high, int count);

// Tick text with as many decimals as the step needs; scientific for very
// large or very small numbers ("2e-5", "1.5e+6").
std::string tickText(double value, double step);

// Levels for filled contours: a nice step, the first level at or below `low`
// and the last at or above `high`, so every value falls in a band. A flat
// field (low == high) still gets one band around its value.
std::vector<double> contourLevels(double low, double high, int bands);

}  // namespace bm::trazel
