#pragma once
// Filled contours of a field given on a rectangular grid (not necessarily
// evenly spaced). Each grid cell is split into two triangles and the field is
// taken as linear on each, so the bands are exact polygons: a cell that lies
// in one band is a rectangle, other cells give the triangle clipped to each
// band it crosses. The iso-lines come from the same triangles, so lines and
// fills agree.

#include <cstddef>
#include <vector>

namespace bm::trazel {

struct Point {
    double x = 0;
    double y = 0;
};

struct BandPolygon {
    int band = 0;  // between levels[band] and levels[band + 1]
    std::vector<Point> points;
};

struct IsoSegment {
    int level = 0;  // index into the levels
    Point a, b;
};

struct ContourMap {
    std::vector<double> levels;
    std::vector<BandPolygon> polygons;
    std::vector<IsoSegment> lines;  // only at the inner levels
};

// `values` holds the field at (xs[ix], ys[iy]) at index ix * ys.size() + iy.
// Levels must be increasing; values outside them count to the outer bands.
// A cell with a corner without a value (NaN) is left empty.
ContourMap contourMap(const std::vector<double>& xs, const std::vector<double>& ys, const std::vector<double>& values,
                      const std::vector<double>& levels);

// The band a value falls in: levels[k] <= v < levels[k + 1], clamped to the outer bands.
int bandOf(double value, const std::vector<double>& levels);

double polygonArea(const std::vector<Point>& points);

}  // namespace bm::trazel
