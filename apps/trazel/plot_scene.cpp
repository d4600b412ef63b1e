#include "apps/trazel/plot_scene.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include "apps/trazel/axis_ticks.h"
#include "apps/trazel/cell_number.h"
#include "model/number_text.h"

namespace bm::trazel {

namespace {

constexpr int kContourBands = 10;

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

std::string headline(const PlotFile& f) {
    if (f.timeVarying) return f.model + " (time-varying dispersion)";
    return modelTitle(f.model);
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

Scene contourScene(const PlotFile& f, const ViewState& view) {
    const Grid& g = f.grid;
    Scene s;
    s.kind = SceneKind::Contours;
    s.title = headline(f);
    std::vector<std::string> words = modelWords(f);
    if (f.kind == PlotKind::Volume) words.push_back(coordinateName("z", g.z[static_cast<std::size_t>(view.plane)], f.lengthUnit));
    words.push_back(coordinateName("t", g.t[static_cast<std::size_t>(view.time)], f.timeUnit));
    s.subtitle = joined(words);
    s.xLabel = "x" + unitSuffix(f.lengthUnit);
    s.yLabel = "y" + unitSuffix(f.lengthUnit);
    s.legendTitle = f.timeVarying ? "C" + unitSuffix(f.concentrationUnit) : "C/Co";
    // One colour scale for every time and plane, so that views compare.
    const auto [low, high] = std::minmax_element(g.c.begin(), g.c.end());
    const std::vector<double> levels = contourLevels(*low, *high, kContourBands);
    std::vector<double> slice(g.nx() * g.ny());
    for (std::size_t ix = 0; ix < g.nx(); ++ix)
        for (std::size_t iy = 0; iy < g.ny(); ++iy)
            slice[ix * g.ny() + iy] = g.at(ix, iy, static_cast<std::size_t>(view.plane), static_cast<std::size_t>(view.time));
    s.contours = contourMap(g.x, g.y, slice, levels);
    if (g.nx() < 2 || g.ny() < 2) s.note = "A contour plot needs at least two x and two y values.";
    s.extent = {g.x.front(), g.x.back(), g.y.front(), g.y.back()};
    if (s.extent.xMax <= s.extent.xMin) s.extent.xMax = s.extent.xMin + 1;
    if (s.extent.yMax <= s.extent.yMin) s.extent.yMax = s.extent.yMin + 1;
    return s;
}

Scene histogramScene(const PlotFile& f, const ViewState& view) {
    Scene s;
    s.kind = SceneKind::Histogram;
    const std::vector<double>& values = histogramValues(f, view);
    const std::string count = "n = " + std::to_string(values.size());
    if (f.kind == PlotKind::Simulation) {
        s.title = "Monte Carlo Simulation" + (f.model.empty() ? "" : " \u2013 " + f.model);
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
    if (versus == Versus::Distance)
        for (double t : file.grid.t) names.push_back(coordinateName("t", t, file.timeUnit));
    else
        for (double x : file.grid.x) names.push_back(coordinateName("x", x, file.lengthUnit));
    return names;
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
    for (double t : file.grid.t) names.push_back(coordinateName("t", t, file.timeUnit));
    return names;
}

std::vector<std::string> planeNames(const PlotFile& file) {
    std::vector<std::string> names;
    for (double z : file.grid.z) names.push_back(coordinateName("z", z, file.lengthUnit));
    return names;
}

const std::vector<double>& histogramValues(const PlotFile& file, const ViewState& view) {
    static const std::vector<double> none;
    if (file.kind == PlotKind::Simulation) return file.samples;
    if (file.kind == PlotKind::Generated && !file.variants.empty())
        return file.variants[static_cast<std::size_t>(std::clamp<int>(view.variant, 0, static_cast<int>(file.variants.size()) - 1))].samples;
    return none;
}

ViewState clampedView(const PlotFile& file, ViewState view) {
    auto within = [](int v, std::size_t n) { return n == 0 ? 0 : std::clamp<int>(v, 0, static_cast<int>(n) - 1); };
    view.time = within(view.time, file.grid.nt());
    view.plane = within(view.plane, file.grid.nz());
    view.variant = within(view.variant, file.variants.size());
    view.bins = std::clamp(view.bins, 0, 500);
    const std::size_t curves = view.versus == Versus::Distance ? file.grid.nt() : file.grid.nx();
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
    }
    return {};
}

}  // namespace bm::trazel
