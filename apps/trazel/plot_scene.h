#pragma once
// What a view of a plot file shows, free of any drawing toolkit: the title,
// the axis labels, the curves, bars or contour bands, and the extent of the
// data. The painter turns a scene into pixels or vectors; the CSV writer
// turns the same view into numbers.

#include <string>
#include <vector>

#include <memory>

#include "apps/trazel/contour_map.h"
#include "apps/trazel/histogram.h"
#include "apps/trazel/plot_file.h"
#include "apps/trazel/smooth_field.h"

namespace bm::trazel {

// How a one-dimensional result is drawn: one curve per time over distance, or
// one curve per position over time.
enum class Versus { Distance, Time };

// The sections of a three-dimensional result beside its x-y plane.
enum class Section { XZ, YZ };

// A choice of -1 is automatic: a contour plot opens where the plume is, at
// the last time that holds a value above zero and, in three dimensions, at
// the z plane with the largest value of that time; the sections pass through
// the largest value of that plane.
struct ViewState {
    Versus versus = Versus::Distance;
    int time = -1;      // index of the time shown by a contour view
    int plane = -1;     // index of the z plane shown by a three-dimensional view (of all the file's planes)
    int sectionX = -1;  // x of the y-z section (index among the file's x values)
    int sectionY = -1;  // y of the x-z section
    int variant = 0;  // index of the variant of a generated-samples file
    int bins = 0;     // histogram bins; 0 chooses automatically
    // Curves shown by a profile view, as indexes into curveNames(), unless
    // the automatic choice is in force.
    bool automaticCurves = true;
    std::vector<int> shown;
    // A fit's residuals against the observations' numbers instead of time.
    bool residualsByNumber = false;
};

struct Curve {
    std::string name;
    int colour = 0;  // index into the painter's palette, fixed per curve
    std::vector<Point> points;
    bool stepped = false;       // drawn as an empirical distribution
    bool secondAxis = false;    // measured on the right-hand axis
    bool markers = false;       // small marks at the data points
    bool pointsOnly = false;    // marks alone, without a line (observations)
    // A curve without a name stays out of the legend.
};

struct Bar {
    double from = 0, to = 0, height = 0;
};

// A dashed line across a contour plot where another view cuts it: x = at
// (vertical) or y = at.
struct Guide {
    bool vertical = true;
    double at = 0;
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
    std::vector<Guide> guides;
    // The field behind the contours, for reading the value under the pointer.
    std::shared_ptr<const Field> field;
    Extent extent;           // what a reset zoom shows
    double secondAxisScale = 1;  // right-hand value = left-hand value / scale
    std::string note;        // a word for an empty picture ("A contour plot needs ...")
};

// Names of the curves a profile can show ("t = 10 day", "x = 20 m"), or
// the places of a fit ("x = 20 m, y = 0 m").
std::vector<std::string> curveNames(const PlotFile& file, Versus versus);
// The places of a fit that a view shows (indexes into its places).
std::vector<int> shownPlaces(const PlotFile& file, const ViewState& view);
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

// The view's state with every index brought into range and every automatic
// choice made.
ViewState clampedView(const PlotFile& file, ViewState view);

// Where a contour plot opens: the last time with a value above zero (the
// last time when none has), and that time's z plane with the largest value.
int openingTime(const PlotFile& file);
int openingPlane(const PlotFile& file, int time);

// The x-y plane a contour view shows: the plane read in full when the file
// has it for that time and plane, else the overview's nearest plane.
Field shownPlane(const PlotFile& file, const ViewState& view);
// Whether shownPlane has every node of the file (or as many as a plane keeps).
bool planeInFull(const PlotFile& file, const ViewState& view);

Scene buildScene(const PlotFile& file, const ViewState& view);
// A fit's residuals (observed - fitted) at the places the view shows, against
// time or the observations' numbers, with a line at zero.
Scene buildResidualScene(const PlotFile& file, const ViewState& view);
// A section of a three-dimensional result: x-z at the view's y, y-z at its x.
Scene buildSectionScene(const PlotFile& file, const ViewState& view, Section section);

}  // namespace bm::trazel
