#pragma once
// A field on a rectangular grid, read between its nodes by monotone cubic
// interpolation (piecewise cubic Hermite with Fritsch-Carlson slopes),
// first along y, then along x. Between two nodes of a line the curve stays
// within their values, so the smooth field never leaves the range of the
// four nodes of its cell: contours drawn from it are round where the grid is
// coarse, and no value appears that the grid does not hold. A node without a
// value (NaN) leaves the cells around it without values.

#include <optional>
#include <vector>

namespace bm::trazel {

struct Field {
    std::vector<double> x, y;  // increasing
    std::vector<double> c;     // at ix * y.size() + iy

    bool empty() const { return x.empty() || y.empty(); }
    double at(std::size_t ix, std::size_t iy) const { return c[ix * y.size() + iy]; }
};

// Slopes of the monotone cubic through (xs, fs): zero at a local extreme and
// on flat stretches, the weighted harmonic mean of the neighbouring secants
// elsewhere; NaN values split the line into pieces of their own.
std::vector<double> monotoneSlopes(const std::vector<double>& xs, const std::vector<double>& fs);

// The cubic of the interval [x0, x1] at x, from the values and slopes at its ends.
double hermite(double x0, double x1, double f0, double f1, double m0, double m1, double x);

// The value at (x, y); nothing outside the grid or in a cell without values.
std::optional<double> fieldValue(const Field& field, double x, double y);

// The field on a finer grid: each interval of x split into `perX` and of y
// into `perY` (1 keeps it). The nodes of the field are nodes of the result,
// with their values.
Field refinedField(const Field& field, int perX, int perY);

// How many parts each interval of an axis of n nodes is split into so that
// the axis gets about `target` nodes (at most 8 parts).
int refinementFor(std::size_t n, std::size_t target);

}  // namespace bm::trazel
