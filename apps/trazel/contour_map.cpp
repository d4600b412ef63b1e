#include "apps/trazel/contour_map.h"

#include <algorithm>
#include <cmath>

namespace bm::trazel {

namespace {

struct Vertex {
    double x, y, f;
};

// One Sutherland-Hodgman pass: keep the part of a convex polygon where
// sign * (f - level) >= 0, with f linear along each edge.
std::vector<Vertex> clip(const std::vector<Vertex>& polygon, double level, double sign) {
    std::vector<Vertex> out;
    const std::size_t n = polygon.size();
    for (std::size_t i = 0; i < n; ++i) {
        const Vertex& a = polygon[i];
        const Vertex& b = polygon[(i + 1) % n];
        const bool inA = sign * (a.f - level) >= 0;
        const bool inB = sign * (b.f - level) >= 0;
        if (inA) out.push_back(a);
        if (inA != inB) {
            const double t = (level - a.f) / (b.f - a.f);
            out.push_back({a.x + t * (b.x - a.x), a.y + t * (b.y - a.y), level});
        }
    }
    return out;
}

void addTriangle(const Vertex (&v)[3], const std::vector<double>& levels, ContourMap& map) {
    const int bands = static_cast<int>(levels.size()) - 1;
    const double low = std::min({v[0].f, v[1].f, v[2].f});
    const double high = std::max({v[0].f, v[1].f, v[2].f});
    const int first = bandOf(low, levels), last = bandOf(high, levels);
    for (int k = first; k <= last; ++k) {
        std::vector<Vertex> piece(v, v + 3);
        if (k > 0) piece = clip(piece, levels[static_cast<std::size_t>(k)], +1);
        if (k < bands - 1 && piece.size() >= 3) piece = clip(piece, levels[static_cast<std::size_t>(k) + 1], -1);
        if (piece.size() < 3) continue;
        BandPolygon polygon{k, {}};
        for (const Vertex& p : piece) polygon.points.push_back({p.x, p.y});
        if (polygonArea(polygon.points) > 0) map.polygons.push_back(std::move(polygon));
    }
    for (int level = std::max(1, first); level <= std::min(last, bands - 1); ++level) {
        const double l = levels[static_cast<std::size_t>(level)];
        Point ends[3];
        int found = 0;
        for (int e = 0; e < 3 && found < 2; ++e) {
            const Vertex& a = v[e];
            const Vertex& b = v[(e + 1) % 3];
            if ((a.f >= l) != (b.f >= l)) {
                const double t = (l - a.f) / (b.f - a.f);
                ends[found++] = {a.x + t * (b.x - a.x), a.y + t * (b.y - a.y)};
            }
        }
        if (found == 2) map.lines.push_back({level, ends[0], ends[1]});
    }
}

}  // namespace

int bandOf(double value, const std::vector<double>& levels) {
    const int bands = static_cast<int>(levels.size()) - 1;
    const auto above = std::upper_bound(levels.begin(), levels.end(), value);
    const int k = static_cast<int>(above - levels.begin()) - 1;
    return std::clamp(k, 0, std::max(0, bands - 1));
}

double polygonArea(const std::vector<Point>& points) {
    double twice = 0;
    for (std::size_t i = 0; i < points.size(); ++i) {
        const Point& a = points[i];
        const Point& b = points[(i + 1) % points.size()];
        twice += a.x * b.y - b.x * a.y;
    }
    return std::fabs(twice) / 2;
}

ContourMap contourMap(const std::vector<double>& xs, const std::vector<double>& ys, const std::vector<double>& values,
                      const std::vector<double>& levels) {
    ContourMap map;
    map.levels = levels;
    const std::size_t nx = xs.size(), ny = ys.size();
    if (nx < 2 || ny < 2 || levels.size() < 2 || values.size() != nx * ny) return map;
    auto vertex = [&](std::size_t ix, std::size_t iy) { return Vertex{xs[ix], ys[iy], values[ix * ny + iy]}; };
    for (std::size_t ix = 0; ix + 1 < nx; ++ix) {
        // Neighbouring cells of one column that lie wholly in one band merge
        // into one rectangle: far fewer shapes where the field is flat.
        int runBand = -1;
        std::size_t runStart = 0;
        auto flush = [&](std::size_t end) {
            if (runBand >= 0)
                map.polygons.push_back({runBand, {{xs[ix], ys[runStart]}, {xs[ix + 1], ys[runStart]}, {xs[ix + 1], ys[end]}, {xs[ix], ys[end]}}});
            runBand = -1;
        };
        for (std::size_t iy = 0; iy + 1 < ny; ++iy) {
            const Vertex a = vertex(ix, iy), b = vertex(ix + 1, iy), c = vertex(ix + 1, iy + 1), d = vertex(ix, iy + 1);
            if (std::isnan(a.f) || std::isnan(b.f) || std::isnan(c.f) || std::isnan(d.f)) {
                flush(iy);  // a cell without values stays empty
                continue;
            }
            const int band = bandOf(a.f, levels);
            if (bandOf(b.f, levels) == band && bandOf(c.f, levels) == band && bandOf(d.f, levels) == band) {
                // Whole cell in one band: no level crosses it.
                if (band != runBand) {
                    flush(iy);
                    runBand = band;
                    runStart = iy;
                }
                continue;
            }
            flush(iy);
            addTriangle({a, b, c}, levels, map);
            addTriangle({a, c, d}, levels, map);
        }
        flush(ny - 1);
    }
    return map;
}

}  // namespace bm::trazel
