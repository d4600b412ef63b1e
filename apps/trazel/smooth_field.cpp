#include "apps/trazel/smooth_field.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace bm::trazel {

namespace {

constexpr double kMissing = std::numeric_limits<double>::quiet_NaN();

// The slope at node k from its neighbours only, so that one value anywhere
// can be had without the whole line. A neighbour without a value ends the piece.
double slopeAt(const double* xs, const double* fs, std::size_t n, std::size_t k) {
    if (std::isnan(fs[k])) return kMissing;
    const bool left = k > 0 && !std::isnan(fs[k - 1]);
    const bool right = k + 1 < n && !std::isnan(fs[k + 1]);
    if (!left && !right) return 0;
    if (!left) return (fs[k + 1] - fs[k]) / (xs[k + 1] - xs[k]);
    if (!right) return (fs[k] - fs[k - 1]) / (xs[k] - xs[k - 1]);
    const double h0 = xs[k] - xs[k - 1], h1 = xs[k + 1] - xs[k];
    const double d0 = (fs[k] - fs[k - 1]) / h0, d1 = (fs[k + 1] - fs[k]) / h1;
    if (d0 * d1 <= 0) return 0;  // an extreme or a flat side: no overshoot
    const double w0 = 2 * h1 + h0, w1 = h1 + 2 * h0;
    return (w0 + w1) / (w0 / d0 + w1 / d1);
}

// The interval [xs[k], xs[k + 1]] that holds x (the last one for the end node).
std::size_t intervalOf(const std::vector<double>& xs, double x) {
    const auto above = std::upper_bound(xs.begin(), xs.end(), x);
    const auto k = static_cast<std::size_t>(std::max<std::ptrdiff_t>(0, above - xs.begin() - 1));
    return std::min(k, xs.size() - 2);
}

// A value on the line through (xs, fs) with the slopes ms, inside interval k.
double along(const std::vector<double>& xs, const double* fs, const double* ms, std::size_t k, double x) {
    return hermite(xs[k], xs[k + 1], fs[k], fs[k + 1], ms[k], ms[k + 1], x);
}

// The points of an axis split `parts` times per interval.
std::vector<double> splitAxis(const std::vector<double>& a, int parts) {
    if (parts <= 1 || a.size() < 2) return a;
    std::vector<double> out;
    for (std::size_t k = 0; k + 1 < a.size(); ++k)
        for (int p = 0; p < parts; ++p) out.push_back(a[k] + (a[k + 1] - a[k]) * p / parts);
    out.push_back(a.back());
    return out;
}

// The values of a line at the points of its split axis.
void refineLine(const std::vector<double>& xs, const double* fs, int parts, double* out, std::size_t stride) {
    const std::size_t n = xs.size();
    if (parts <= 1 || n < 2) {
        for (std::size_t k = 0; k < n; ++k) out[k * stride] = fs[k];
        return;
    }
    std::vector<double> ms(n);
    for (std::size_t k = 0; k < n; ++k) ms[k] = slopeAt(xs.data(), fs, n, k);
    std::size_t at = 0;
    for (std::size_t k = 0; k + 1 < n; ++k)
        for (int p = 0; p < parts; ++p) {
            const double x = xs[k] + (xs[k + 1] - xs[k]) * p / parts;
            out[at++ * stride] = p == 0 ? fs[k] : along(xs, fs, ms.data(), k, x);
        }
    out[at * stride] = fs[n - 1];
}

}  // namespace

std::vector<double> monotoneSlopes(const std::vector<double>& xs, const std::vector<double>& fs) {
    std::vector<double> ms(xs.size());
    for (std::size_t k = 0; k < xs.size(); ++k) ms[k] = slopeAt(xs.data(), fs.data(), xs.size(), k);
    return ms;
}

double hermite(double x0, double x1, double f0, double f1, double m0, double m1, double x) {
    if (std::isnan(f0) || std::isnan(f1)) return kMissing;
    const double h = x1 - x0;
    const double t = (x - x0) / h, u = 1 - t;
    const double v = f0 * (1 + 2 * t) * u * u + m0 * h * t * u * u + f1 * t * t * (3 - 2 * t) - m1 * h * t * t * u;
    // The curve is monotone between the nodes; the clamp only takes rounding away.
    return std::clamp(v, std::min(f0, f1), std::max(f0, f1));
}

std::optional<double> fieldValue(const Field& field, double x, double y) {
    const std::size_t nx = field.x.size(), ny = field.y.size();
    if (nx == 0 || ny == 0) return std::nullopt;
    if (x < field.x.front() || x > field.x.back() || y < field.y.front() || y > field.y.back()) return std::nullopt;
    // Along y at the columns the x interpolation needs (its interval and one on each side).
    auto columnValue = [&](std::size_t i) {
        const double* column = &field.c[i * ny];
        if (ny == 1) return column[0];
        const std::size_t k = intervalOf(field.y, y);
        const double m0 = slopeAt(field.y.data(), column, ny, k), m1 = slopeAt(field.y.data(), column, ny, k + 1);
        return hermite(field.y[k], field.y[k + 1], column[k], column[k + 1], m0, m1, y);
    };
    double v = 0;
    if (nx == 1) {
        v = columnValue(0);
    } else {
        const std::size_t k = intervalOf(field.x, x);
        const std::size_t from = k > 0 ? k - 1 : 0, to = std::min(nx - 1, k + 2);
        std::vector<double> xs(field.x.begin() + static_cast<std::ptrdiff_t>(from), field.x.begin() + static_cast<std::ptrdiff_t>(to) + 1);
        std::vector<double> gs;
        for (std::size_t i = from; i <= to; ++i) gs.push_back(columnValue(i));
        const std::size_t j = k - from;
        const double m0 = slopeAt(xs.data(), gs.data(), xs.size(), j), m1 = slopeAt(xs.data(), gs.data(), xs.size(), j + 1);
        v = hermite(xs[j], xs[j + 1], gs[j], gs[j + 1], m0, m1, x);
    }
    if (std::isnan(v)) return std::nullopt;
    return v;
}

Field refinedField(const Field& field, int perX, int perY) {
    Field out;
    out.x = splitAxis(field.x, perX);
    out.y = splitAxis(field.y, perY);
    const std::size_t nx = field.x.size(), ny = field.y.size(), ry = out.y.size(), rx = out.x.size();
    // Along y for every column of the field, then along x for every row.
    std::vector<double> columns(nx * ry);
    for (std::size_t i = 0; i < nx; ++i) refineLine(field.y, &field.c[i * ny], perY, &columns[i * ry], 1);
    out.c.assign(rx * ry, kMissing);
    std::vector<double> row(nx);
    for (std::size_t j = 0; j < ry; ++j) {
        for (std::size_t i = 0; i < nx; ++i) row[i] = columns[i * ry + j];
        refineLine(field.x, row.data(), perX, &out.c[j], ry);
    }
    return out;
}

int refinementFor(std::size_t n, std::size_t target) {
    if (n < 2 || target <= n) return 1;
    const std::size_t parts = (target - 1 + n - 2) / (n - 1);
    return static_cast<int>(std::clamp<std::size_t>(parts, 1, 8));
}

}  // namespace bm::trazel
