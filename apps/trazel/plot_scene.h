#pragma once
// What a view of a plot file shows, free of any drawing toolkit: the title,
// the axis labels, the curves, bars or contour bands, and the extent of the
// data. The painter turns a scene into pixels or vectors; the CSV writer
// turns the same view into numbers.

#include <string>
#include <vector>

#include "apps/trazel/contour_map.h"
#include "apps/trazel/histogram.h"
#include "apps/trazel/plot_file.h"

namespace bm::trazel {

// How a one-dimensional result is drawn: one curve per time over distance, or
// one curve per position over time.
enum class Versus { Distance, Time };

struct ViewState {
    Versus versus = Versus::Distance;
    int time = 0;     // index of the time shown by a contour view
    int plane = 0;    // index of the z plane shown by a three-dimensional view
    int variant = 0;  // index of the variant of a generated-samples file
    int bins = 0;     // histogram bins; 0 chooses automatically
    // Curves shown by a profile view, as indexes into curveNames(), unless
    // the automatic choice is in force.
    bool automaticCurves = true;
    std::vector<int> shown;
};

struct Curve {
    std::string name;
    int colour = 0;  // index into the painter's palette, fixed per curve
    std::vector<Point> points;
    bool stepped = false;       // drawn as an empirical distribution
    bool secondAxis = false;    // measured on the right-hand axis
    bool markers = false;       // small marks at the data points
};

struct Bar {
    double from = 0, to = 0, height = 0;
};

struct Extent {
    double xMin = 0, xMax = 1, yMin = 0, yMax = 1;
};

enum class SceneKind { Curves, Contours, Histogram };

struct Scene {
    SceneKind kind = SceneKind::Curves;
    std::string title;
    std::string subtitle;
    std::string xLabel, yLabel;
    std::string secondAxisLabel;  // histogram: the cumulative fraction
    std::string legendTitle;      // curves; the colour bar's label for contours
    std::vector<Curve> curves;
    std::vector<Bar> bars;
    ContourMap contours;
    Extent extent;           // what a reset zoom shows
    double secondAxisScale = 1;  // right-hand value = left-hand value / scale
    std::string note;        // a word for an empty picture ("A contour plot needs ...")
};

// Names of the curves a profile can show ("t = 10 day", "x = 20 m").
std::vector<std::string> curveNames(const PlotFile& file, Versus versus);
// At most `most` curves spread evenly over `count`, the first and the last included.
std::vector<int> automaticSelection(int count, int most = 8);

// Names for the selectors of the other views ("t = 100 day", "z = 2.5 m").
std::vector<std::string> timeNames(const PlotFile& file);
std::vector<std::string> planeNames(const PlotFile& file);

// Labels built from the header's units.
std::string unitSuffix(const std::string& unit);  // " (m)" or ""
std::string concentrationLabel(const PlotFile& file);

// The values a histogram view shows (simulation results or a variant's samples).
const std::vector<double>& histogramValues(const PlotFile& file, const ViewState& view);

// The view's state with every index brought into range.
ViewState clampedView(const PlotFile& file, ViewState view);

Scene buildScene(const PlotFile& file, const ViewState& view);

}  // namespace bm::trazel
