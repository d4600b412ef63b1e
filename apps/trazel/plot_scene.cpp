#include "apps/trazel/plot_scene.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <limits>
#include <optional>
#include <utility>

#include "apps/trazel/axis_ticks.h"
#include "apps/trazel/cell_number.h"
#include "model/number_text.h"

namespace bm::trazel {

namespace {

constexpr int kContourBands = 10;
// Nodes per axis that smooth contours are drawn on (a coarser grid is refined).
constexpr std::size_t kSmoothNodes = 160;

std::string joined(const std::vector<std::string>& parts) {
    std::string text;
    for (const std::string& p : parts) {
        if (p.empty()) continue;
        if (!text.empty()) text += "    ";
        text += p;
    }
    return text;
}

std::string coordinateName(const char* axis, double value, const std::string& unit) {
    return std::string(axis) + " = " + plainNumber(value) + (unit.empty() ? "" : " " + unit);
}

bool isUnsaturated(const PlotFile& f) { return contains(toLower(f.model), "unsaturated"); }

// "One Dimensional" reads as "One Dimensional Model"; a chemical's name stays behind it.
std::string modelTitle(const std::string& model) {
    if (model.empty() || contains(toLower(model), "model")) return model;
    const auto dash = model.find(" - ");
    if (dash == std::string::npos) return model + " Model";
    return model.substr(0, dash) + " Model" + model.substr(dash);
}

// "Co = 100 mg/L" from the inflow concentration, when the file gives a number.
std::string inflowConcentration(const PlotFile& f) {
    for (const char* label : {"Initial Concentration", "Initial Concentration (Co)", "Contaminant Conc. at Inflow Boundary"}) {
        const std::string text = f.value(label);
        if (text.empty()) continue;
        std::string number = text.substr(0, text.find(' '));
        if (!cellNumber(number)) continue;
        const bool unitGiven = text.find(' ') != std::string::npos;
        return "Co = " + (unitGiven ? text : number + (f.concentrationUnit.empty() ? "" : " " + f.concentrationUnit));
    }
    return {};
}

// A title says when the values behind it are incomplete.
std::string flagged(const std::string& title, const PlotFile& f) {
    if (f.incomplete.empty()) return title;
    return title + " \u2014 incomplete: " + f.incomplete;
}

std::string headline(const PlotFile& f) {
    return flagged(f.timeVarying ? f.model + " (time-varying dispersion)" : modelTitle(f.model), f);
}

std::vector<std::string> modelWords(const PlotFile& f) {
    if (f.timeVarying)
        return {f.aquifer.empty() ? "" : "Dispersion: " + f.aquifer, f.contaminant.empty() ? "" : "Source: " + f.contaminant};
    return {f.aquifer.empty() ? "" : "Aquifer: " + f.aquifer, f.contaminant.empty() ? "" : "Contaminant: " + f.contaminant,
            inflowConcentration(f)};
}

Extent curveExtent(const std::vector<Curve>& curves) {
    double xLow = std::numeric_limits<double>::infinity(), xHigh = -xLow, yLow = 0, yHigh = -xLow;
    for (const Curve& c : curves)
        for (const Point& p : c.points) {
            if (std::isnan(p.y)) continue;
            xLow = std::min(xLow, p.x);
            xHigh = std::max(xHigh, p.x);
            yLow = std::min(yLow, p.y);
            yHigh = std::max(yHigh, p.y);
        }
    if (!std::isfinite(xLow)) return {};
    if (xHigh <= xLow) {
        const double half = xLow != 0 ? std::fabs(xLow) * 0.1 : 1;
        xLow -= half;
        xHigh += half;
    }
    if (yHigh <= yLow) yHigh = yLow + 1;
    const double pad = 0.04 * (yHigh - yLow);
    return {xLow, xHigh, yLow - pad, yHigh + pad};
}

Scene profileScene(const PlotFile& f, const ViewState& view) {
    const Grid& g = f.grid;
    Scene s;
    s.kind = SceneKind::Curves;
    s.title = headline(f);
    s.subtitle = joined(modelWords(f));
    s.yLabel = concentrationLabel(f);
    const std::vector<std::string> names = curveNames(f, view.versus);
    const std::vector<int> shown = view.automaticCurves ? automaticSelection(static_cast<int>(names.size())) : view.shown;
    const bool overDistance = view.versus == Versus::Distance;
    s.xLabel = overDistance ? (isUnsaturated(f) ? "Depth x" : "Distance x") + unitSuffix(f.lengthUnit)
                            : "Time t" + unitSuffix(f.timeUnit);
    s.legendTitle = overDistance ? "Time" : (isUnsaturated(f) ? "Depth" : "Position");
    const std::size_t along = overDistance ? g.nx() : g.nt();
    for (int k : shown) {
        if (k < 0 || k >= static_cast<int>(names.size())) continue;
        Curve c;
        c.name = names[static_cast<std::size_t>(k)];
        c.colour = k;
        c.markers = along <= 40;
        for (std::size_t i = 0; i < along; ++i) {
            const auto ix = overDistance ? i : static_cast<std::size_t>(k);
            const auto it = overDistance ? static_cast<std::size_t>(k) : i;
            c.points.push_back({overDistance ? g.x[ix] : g.t[it], g.at(ix, 0, 0, it)});
        }
        s.curves.push_back(std::move(c));
    }
    if (s.curves.empty()) s.note = "No curve is selected.";
    s.extent = curveExtent(s.curves);
    return s;
}

// --- a fit to observations -------------------------------------------------------

std::string placeName(const PlotFile& f, const FitPlotPlace& place) {
    std::string name = coordinateName("x", place.x, f.lengthUnit);
    if (f.fit.dimension >= 2) name += ", " + coordinateName("y", place.y, f.lengthUnit);
    if (f.fit.dimension >= 3) name += ", " + coordinateName("z", place.z, f.lengthUnit);
    return name;
}

std::string fitQuantity(const PlotFile& f) { return f.fit.relative ? "C/Co" : "C" + unitSuffix(f.concentrationUnit); }


// Six significant digits: a title line, not the file's full precision.
std::string briefNumber(double v) {
    char text[32];
    const auto end = std::to_chars(text, text + sizeof text, v, std::chars_format::general, 6).ptr;  // no locale
    return std::string(text, end);
}

std::string estimatesText(const PlotFile& f) {
    std::string text;
    for (const FitPlotEstimate& e : f.fit.estimates) text += (text.empty() ? "Fitted: " : ", ") + e.name + " = " + briefNumber(e.value);
    return text;
}

// The extent of curves with marks, which must not be cut by the frame:
// from `from` (time 0) or half a step before the first number, to a little
// beyond the last.
Extent markedExtent(const std::vector<Curve>& curves, std::optional<double> from) {
    Extent e = curveExtent(curves);
    const double pad = from ? 0.03 * (e.xMax - std::min(*from, e.xMin)) : 0.5;
    e.xMin = from ? std::min(*from, e.xMin) : e.xMin - pad;
    e.xMax += pad;
    return e;
}

Scene fitScene(const PlotFile& f, const ViewState& view) {
    Scene s;
    s.kind = SceneKind::Curves;
    s.title = modelTitle(f.model) + " fitted to observations";
    s.subtitle = joined({f.aquifer.empty() ? "" : "Aquifer: " + f.aquifer,
                         f.contaminant.empty() ? "" : "Contaminant: " + f.contaminant, estimatesText(f),
                         f.fit.rmse ? "RMSE = " + briefNumber(*f.fit.rmse) : ""});
    s.xLabel = "Time t" + unitSuffix(f.timeUnit);
    s.yLabel = f.fit.relative ? "Relative concentration C/Co" : "Concentration" + unitSuffix(f.concentrationUnit);
    s.legendTitle = "Fitted at";
    std::vector<Curve> observed;
    for (const int k : shownPlaces(f, view)) {
        const FitPlotPlace& place = f.fit.places[static_cast<std::size_t>(k)];
        Curve line;
        line.name = placeName(f, place);
        line.colour = k;
        for (std::size_t i = 0; i < place.times.size(); ++i) line.points.push_back({place.times[i], place.values[i]});
        s.curves.push_back(std::move(line));
        Curve marks;
        marks.colour = k;
        marks.pointsOnly = true;
        for (const FitPlotObservation& o : place.observations) marks.points.push_back({o.t, o.observed});
        observed.push_back(std::move(marks));
    }
    if (s.curves.empty()) {
        s.note = "No place is selected.";
    } else {
        // The marks over the lines, and a legend entry that says what they are.
        Curve key;
        key.name = "observed";
        key.colour = 7;
        key.pointsOnly = true;
        observed.push_back(std::move(key));
    }
    for (Curve& c : observed) s.curves.push_back(std::move(c));
    s.extent = markedExtent(s.curves, 0);
    return s;
}

// The index of the value nearest to v in an increasing list.
std::size_t nearestIndex(const std::vector<double>& values, double v) {
    if (values.empty()) return 0;
    const auto above = std::lower_bound(values.begin(), values.end(), v);
    if (above == values.begin()) return 0;
    if (above == values.end()) return values.size() - 1;
    const auto k = static_cast<std::size_t>(above - values.begin());
    return v - values[k - 1] <= values[k] - v ? k - 1 : k;
}

std::size_t at(int index) { return static_cast<std::size_t>(std::max(index, 0)); }

// One colour scale for every time and plane, so that views compare.
std::vector<double> sharedLevels(const PlotFile& f) { return contourLevels(f.lowest, f.highest, kContourBands); }

// Smooth contours of a field, its extent, and the field for the readout.
void drawField(Scene& s, Field field, const std::vector<double>& levels) {
    const std::size_t nx = field.x.size(), ny = field.y.size();
    if (nx >= 2 && ny >= 2) {
        const Field smooth = refinedField(field, refinementFor(nx, kSmoothNodes), refinementFor(ny, kSmoothNodes));
        s.contours = contourMap(smooth.x, smooth.y, smooth.c, levels);
    } else {
        s.contours.levels = levels;
    }
    s.extent = {field.x.empty() ? 0 : field.x.front(), field.x.empty() ? 1 : field.x.back(),
                field.y.empty() ? 0 : field.y.front(), field.y.empty() ? 1 : field.y.back()};
    if (s.extent.xMax <= s.extent.xMin) s.extent.xMax = s.extent.xMin + 1;
    if (s.extent.yMax <= s.extent.yMin) s.extent.yMax = s.extent.yMin + 1;
    s.field = std::make_shared<const Field>(std::move(field));
}

Scene contourFrame(const PlotFile& f) {
    Scene s;
    s.kind = SceneKind::Contours;
    s.title = headline(f);
    s.legendTitle = f.timeVarying ? "C" + unitSuffix(f.concentrationUnit) : "C/Co";
    return s;
}

Scene contourScene(const PlotFile& f, const ViewState& view) {
    Scene s = contourFrame(f);
    std::vector<std::string> words = modelWords(f);
    if (f.kind == PlotKind::Volume) words.push_back(coordinateName("z", f.axes.z[at(view.plane)], f.lengthUnit));
    words.push_back(coordinateName("t", f.axes.t[at(view.time)], f.timeUnit));
    s.subtitle = joined(words);
    s.xLabel = "x" + unitSuffix(f.lengthUnit);
    s.yLabel = "y" + unitSuffix(f.lengthUnit);
    drawField(s, shownPlane(f, view), sharedLevels(f));
    if (f.axes.x.size() < 2 || f.axes.y.size() < 2) s.note = "A contour plot needs at least two x and two y values.";
    if (f.kind == PlotKind::Volume) {
        s.guides.push_back({true, f.axes.x[at(view.sectionX)]});
        s.guides.push_back({false, f.axes.y[at(view.sectionY)]});
    }
    return s;
}

// The node of the largest value of a field, as (x, y); the middle when it has none.
std::pair<double, double> peakOf(const Field& field) {
    std::pair<double, double> peak{field.x.empty() ? 0 : field.x[field.x.size() / 2], field.y.empty() ? 0 : field.y[field.y.size() / 2]};
    double best = -std::numeric_limits<double>::infinity();
    for (std::size_t i = 0; i < field.x.size(); ++i)
        for (std::size_t j = 0; j < field.y.size(); ++j)
            if (const double v = field.at(i, j); v > best) {
                best = v;
                peak = {field.x[i], field.y[j]};
            }
    return peak;
}

Scene histogramScene(const PlotFile& f, const ViewState& view) {
    Scene s;
    s.kind = SceneKind::Histogram;
    const std::vector<double>& values = histogramValues(f, view);
    const std::string count = "n = " + std::to_string(values.size());
    if (f.kind == PlotKind::Simulation) {
        s.title = flagged("Monte Carlo Simulation" + (f.model.empty() ? "" : " \u2013 " + f.model), f);
        std::vector<std::string> words = modelWords(f);
        if (const std::string chemical = f.value("Chemical"); !chemical.empty()) words.insert(words.begin(), "Chemical: " + chemical);
        words.push_back(count);
        s.subtitle = joined(words);
        s.xLabel = concentrationLabel(f);
        s.yLabel = "Number of iterations";
    } else {
        const Variant& v = f.variants[static_cast<std::size_t>(view.variant)];
        s.title = "Generated Samples \u2013 " + v.name;
        std::string distribution;
        for (const HeaderLine& h : v.inputs)
            if (toLower(h.label) == "distribution type") distribution = "Distribution: " + h.value;
        s.subtitle = joined({distribution, count,
                             "variant " + std::to_string(view.variant + 1) + " of " + std::to_string(f.variants.size())});
        s.xLabel = v.name;
        s.yLabel = "Number of samples";
    }
    s.secondAxisLabel = "Cumulative fraction";
    const Histogram h = makeHistogram(values, view.bins);
    int most = 0;
    for (std::size_t k = 0; k < h.counts.size(); ++k) {
        s.bars.push_back({h.edges[k], h.edges[k + 1], static_cast<double>(h.counts[k])});
        most = std::max(most, h.counts[k]);
    }
    s.extent = {h.edges.front(), h.edges.back(), 0, most * 1.08};
    s.secondAxisScale = s.extent.yMax / 1.05;  // a cumulative fraction of 1 sits just below the top
    Curve c;
    c.name = "Cumulative fraction";
    c.stepped = true;
    c.secondAxis = true;
    c.colour = 1;
    const auto cumulative = empiricalCumulative(values);
    c.points.push_back({h.edges.front(), 0});
    for (const CumulativePoint& p : cumulative) c.points.push_back({p.value, p.fraction * s.secondAxisScale});
    c.points.push_back({h.edges.back(), s.secondAxisScale});
    s.curves.push_back(std::move(c));
    return s;
}

}  // namespace

std::string unitSuffix(const std::string& unit) { return unit.empty() ? "" : " (" + unit + ")"; }

std::string concentrationLabel(const PlotFile& file) {
    if (file.timeVarying) return "Concentration" + unitSuffix(file.concentrationUnit);
    return "Relative concentration C/Co";
}

std::vector<std::string> curveNames(const PlotFile& file, Versus versus) {
    std::vector<std::string> names;
    if (file.kind == PlotKind::Fit)
        for (const FitPlotPlace& place : file.fit.places) names.push_back(placeName(file, place));
    else if (versus == Versus::Distance)
        for (double t : file.grid.t) names.push_back(coordinateName("t", t, file.timeUnit));
    else
        for (double x : file.grid.x) names.push_back(coordinateName("x", x, file.lengthUnit));
    return names;
}

std::vector<int> shownPlaces(const PlotFile& file, const ViewState& view) {
    const int count = static_cast<int>(file.fit.places.size());
    std::vector<int> shown = view.automaticCurves ? automaticSelection(count) : view.shown;
    std::erase_if(shown, [count](int k) { return k < 0 || k >= count; });
    return shown;
}

std::vector<int> automaticSelection(int count, int most) {
    std::vector<int> chosen;
    if (count <= most) {
        for (int k = 0; k < count; ++k) chosen.push_back(k);
        return chosen;
    }
    for (int i = 0; i < most; ++i) {
        const int k = static_cast<int>(std::lround(static_cast<double>(i) * (count - 1) / (most - 1)));
        if (chosen.empty() || chosen.back() != k) chosen.push_back(k);
    }
    return chosen;
}

std::vector<std::string> timeNames(const PlotFile& file) {
    std::vector<std::string> names;
    for (double t : file.axes.t) names.push_back(coordinateName("t", t, file.timeUnit));
    return names;
}

std::vector<std::string> planeNames(const PlotFile& file) {
    std::vector<std::string> names;
    for (double z : file.axes.z) names.push_back(coordinateName("z", z, file.lengthUnit));
    return names;
}

const std::vector<double>& histogramValues(const PlotFile& file, const ViewState& view) {
    static const std::vector<double> none;
    if (file.kind == PlotKind::Simulation) return file.samples;
    if (file.kind == PlotKind::Generated && !file.variants.empty())
        return file.variants[static_cast<std::size_t>(std::clamp<int>(view.variant, 0, static_cast<int>(file.variants.size()) - 1))].samples;
    return none;
}

int openingTime(const PlotFile& file) {
    const std::size_t nt = file.axes.t.size();
    if (nt == 0) return 0;
    const std::size_t nz = file.planePeak.size() / nt;
    for (std::size_t it = nt; it-- > 0;)
        for (std::size_t iz = 0; iz < nz; ++iz)
            if (file.planePeak[it * nz + iz] > 0) return static_cast<int>(it);
    return static_cast<int>(nt) - 1;
}

int openingPlane(const PlotFile& file, int time) {
    const std::size_t nt = file.axes.t.size();
    if (nt == 0 || file.planePeak.size() < nt) return 0;
    const std::size_t nz = file.planePeak.size() / nt;
    int best = 0;
    double largest = -std::numeric_limits<double>::infinity();
    for (std::size_t iz = 0; iz < nz; ++iz)
        if (const double v = file.planePeak[at(time) * nz + iz]; v > largest) {
            largest = v;
            best = static_cast<int>(iz);
        }
    return best;
}

bool planeInFull(const PlotFile& file, const ViewState& view) {
    if (!file.reduced) return true;
    return file.focus && file.focus->time == view.time && file.focus->plane == view.plane;
}

Field shownPlane(const PlotFile& f, const ViewState& view) {
    Field field;
    if (f.reduced && planeInFull(f, view)) {
        field.x = f.focus->x;
        field.y = f.focus->y;
        field.c = f.focus->c;
        return field;
    }
    const Grid& g = f.grid;
    if (g.nt() == 0) return field;
    const std::size_t iz = f.axes.z.empty() ? 0 : nearestIndex(g.z, f.axes.z[at(view.plane)]);
    field.x = g.x;
    field.y = g.y;
    field.c.resize(g.nx() * g.ny());
    for (std::size_t ix = 0; ix < g.nx(); ++ix)
        for (std::size_t iy = 0; iy < g.ny(); ++iy) field.c[ix * g.ny() + iy] = g.at(ix, iy, iz, at(view.time));
    return field;
}

ViewState clampedView(const PlotFile& file, ViewState view) {
    auto within = [](int v, std::size_t n) { return n == 0 ? 0 : std::clamp<int>(v, 0, static_cast<int>(n) - 1); };
    const bool regular = file.kind == PlotKind::Profile || file.kind == PlotKind::Plane || file.kind == PlotKind::Volume;
    if (regular && view.time < 0) view.time = openingTime(file);
    view.time = within(view.time, file.axes.t.size());
    if (regular && view.plane < 0) view.plane = openingPlane(file, view.time);
    view.plane = within(view.plane, file.axes.z.size());
    if (file.kind == PlotKind::Volume && (view.sectionX < 0 || view.sectionY < 0)) {
        const auto [x, y] = peakOf(shownPlane(file, view));
        if (view.sectionX < 0) view.sectionX = static_cast<int>(nearestIndex(file.axes.x, x));
        if (view.sectionY < 0) view.sectionY = static_cast<int>(nearestIndex(file.axes.y, y));
    }
    view.sectionX = within(view.sectionX, file.axes.x.size());
    view.sectionY = within(view.sectionY, file.axes.y.size());
    view.variant = within(view.variant, file.variants.size());
    view.bins = std::clamp(view.bins, 0, 500);
    const std::size_t curves = file.kind == PlotKind::Fit ? file.fit.places.size()
                               : view.versus == Versus::Distance ? file.grid.nt() : file.grid.nx();
    std::erase_if(view.shown, [&](int k) { return k < 0 || k >= static_cast<int>(curves); });
    return view;
}

Scene buildScene(const PlotFile& file, const ViewState& requested) {
    const ViewState view = clampedView(file, requested);
    switch (file.kind) {
    case PlotKind::Profile: return profileScene(file, view);
    case PlotKind::Plane:
    case PlotKind::Volume: return contourScene(file, view);
    case PlotKind::Simulation:
    case PlotKind::Generated: return histogramScene(file, view);
    case PlotKind::Fit: return fitScene(file, view);
    }
    return {};
}

Scene buildResidualScene(const PlotFile& file, const ViewState& requested) {
    const ViewState view = clampedView(file, requested);
    Scene s;
    s.kind = SceneKind::Curves;
    s.title = "Residuals (observed \u2212 fitted)";
    if (file.kind != PlotKind::Fit) {
        s.note = "Residuals belong to a fit to observations.";
        return s;
    }
    s.subtitle = joined({"n = " + std::to_string(file.fit.observationCount()),
                         file.fit.rSquared ? "R\u00b2 = " + briefNumber(*file.fit.rSquared) : ""});
    s.xLabel = view.residualsByNumber ? "Observation number" : "Time t" + unitSuffix(file.timeUnit);
    s.yLabel = "Residual " + fitQuantity(file);
    s.legendTitle = "Observed at";
    double largest = 0;
    for (const int k : shownPlaces(file, view)) {
        const FitPlotPlace& place = file.fit.places[static_cast<std::size_t>(k)];
        Curve marks;
        marks.name = placeName(file, place);
        marks.colour = k;
        marks.pointsOnly = true;
        for (const FitPlotObservation& o : place.observations) {
            marks.points.push_back({view.residualsByNumber ? static_cast<double>(o.number) : o.t, o.residual});
            largest = std::max(largest, std::fabs(o.residual));
        }
        s.curves.push_back(std::move(marks));
    }
    if (s.curves.empty()) s.note = "No place is selected.";
    s.guides.push_back({false, 0});
    s.extent = markedExtent(s.curves, view.residualsByNumber ? std::nullopt : std::optional<double>(0));
    // Zero in the middle, so that a bias shows at a glance.
    if (largest == 0) largest = 1;
    s.extent.yMin = -1.1 * largest;
    s.extent.yMax = 1.1 * largest;
    return s;
}

Scene buildSectionScene(const PlotFile& file, const ViewState& requested, Section section) {
    const ViewState view = clampedView(file, requested);
    Scene s = contourFrame(file);
    if (file.kind != PlotKind::Volume || file.grid.nt() == 0) {
        s.note = "Sections belong to three-dimensional results.";
        return s;
    }
    const Grid& g = file.grid;
    const bool xz = section == Section::XZ;
    // Sections come from the overview: every z plane of the time at once.
    const std::size_t cut = xz ? nearestIndex(g.y, file.axes.y[at(view.sectionY)]) : nearestIndex(g.x, file.axes.x[at(view.sectionX)]);
    Field field;
    field.x = xz ? g.x : g.y;
    field.y = g.z;
    field.c.resize(field.x.size() * field.y.size());
    for (std::size_t i = 0; i < field.x.size(); ++i)
        for (std::size_t iz = 0; iz < g.nz(); ++iz)
            field.c[i * g.nz() + iz] = xz ? g.at(i, cut, iz, at(view.time)) : g.at(cut, i, iz, at(view.time));
    std::vector<std::string> words;
    words.push_back(xz ? coordinateName("y", g.y[cut], file.lengthUnit) : coordinateName("x", g.x[cut], file.lengthUnit));
    words.push_back(coordinateName("t", file.axes.t[at(view.time)], file.timeUnit));
    s.title = xz ? "Section x\u2013z" : "Section y\u2013z";
    s.subtitle = joined(words);
    s.xLabel = (xz ? "x" : "y") + unitSuffix(file.lengthUnit);
    s.yLabel = "z" + unitSuffix(file.lengthUnit);
    drawField(s, std::move(field), sharedLevels(file));
    if (g.nz() < 2) s.note = "A section needs at least two z values.";
    s.guides.push_back({false, file.axes.z[at(view.plane)]});
    s.guides.push_back({true, xz ? file.axes.x[at(view.sectionX)] : file.axes.y[at(view.sectionY)]});
    return s;
}

}  // namespace bm::trazel
