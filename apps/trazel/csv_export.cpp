#include "apps/trazel/csv_export.h"

#include <cmath>
#include <sstream>

#include "apps/trazel/cell_number.h"

namespace bm::trazel {

namespace {

std::string field(const std::string& text) {
    if (text.find_first_of(",\"\n") == std::string::npos) return text;
    std::string quoted = "\"";
    for (char c : text) {
        if (c == '"') quoted += '"';
        quoted += c;
    }
    return quoted + "\"";
}

// A value without a number (a node the file does not hold) is an empty cell.
std::string cell(double v) { return std::isnan(v) ? std::string() : plainNumber(v); }

std::string quantityName(const PlotFile& f) { return f.timeVarying ? "C" + unitSuffix(f.concentrationUnit) : "C/Co"; }

void profile(std::ostringstream& out, const PlotFile& f, const ViewState& view) {
    const Grid& g = f.grid;
    const bool overDistance = view.versus == Versus::Distance;
    out << field(overDistance ? "x" + unitSuffix(f.lengthUnit) : "t" + unitSuffix(f.timeUnit));
    for (const std::string& name : curveNames(f, view.versus)) out << ',' << field(quantityName(f) + " at " + name);
    out << '\n';
    const std::size_t rows = overDistance ? g.nx() : g.nt(), columns = overDistance ? g.nt() : g.nx();
    for (std::size_t r = 0; r < rows; ++r) {
        out << plainNumber(overDistance ? g.x[r] : g.t[r]);
        for (std::size_t c = 0; c < columns; ++c) out << ',' << cell(overDistance ? g.at(r, 0, 0, c) : g.at(c, 0, 0, r));
        out << '\n';
    }
}

void slice(std::ostringstream& out, const PlotFile& f, const ViewState& view) {
    const auto iz = static_cast<std::size_t>(view.plane), it = static_cast<std::size_t>(view.time);
    std::string where = "t = " + plainNumber(f.axes.t[it]) + (f.timeUnit.empty() ? "" : " " + f.timeUnit);
    if (f.kind == PlotKind::Volume) where = "z = " + plainNumber(f.axes.z[iz]) + (f.lengthUnit.empty() ? "" : " " + f.lengthUnit) + ", " + where;
    out << field("x" + unitSuffix(f.lengthUnit)) << ',' << field("y" + unitSuffix(f.lengthUnit)) << ','
        << field(quantityName(f) + " at " + where) << '\n';
    const Field plane = shownPlane(f, view);
    for (std::size_t ix = 0; ix < plane.x.size(); ++ix)
        for (std::size_t iy = 0; iy < plane.y.size(); ++iy)
            out << plainNumber(plane.x[ix]) << ',' << plainNumber(plane.y[iy]) << ',' << cell(plane.at(ix, iy)) << '\n';
}

void bins(std::ostringstream& out, const PlotFile& f, const ViewState& view) {
    const std::vector<double>& values = histogramValues(f, view);
    const Histogram h = makeHistogram(values, view.bins);
    out << "Lower edge,Upper edge,Count,Relative frequency,Cumulative fraction\n";
    const double n = static_cast<double>(values.size());
    int below = 0;
    for (std::size_t k = 0; k < h.counts.size(); ++k) {
        below += h.counts[k];
        out << plainNumber(h.edges[k]) << ',' << plainNumber(h.edges[k + 1]) << ',' << h.counts[k] << ','
            << plainNumber(h.counts[k] / n) << ',' << plainNumber(below / n) << '\n';
    }
}

// Every observation of the places shown: where, when, observed, fitted, residual.
void observations(std::ostringstream& out, const PlotFile& f, const ViewState& view) {
    const std::string quantity = f.fit.relative ? "C/Co" : "C" + unitSuffix(f.concentrationUnit);
    const char* const axes[] = {"x", "y", "z"};
    out << "n";
    for (int axis = 0; axis < f.fit.dimension; ++axis) out << ',' << field(axes[axis] + unitSuffix(f.lengthUnit));
    out << ',' << field("t" + unitSuffix(f.timeUnit)) << ',' << field(quantity + " observed") << ','
        << field(quantity + " fitted") << ',' << field("Residual") << '\n';
    for (const int k : shownPlaces(f, view)) {
        const FitPlotPlace& place = f.fit.places[static_cast<std::size_t>(k)];
        const double where[] = {place.x, place.y, place.z};
        for (const FitPlotObservation& o : place.observations) {
            out << o.number;
            for (int axis = 0; axis < f.fit.dimension; ++axis) out << ',' << plainNumber(where[axis]);
            out << ',' << plainNumber(o.t) << ',' << plainNumber(o.observed) << ',' << plainNumber(o.fitted) << ','
                << plainNumber(o.residual) << '\n';
        }
    }
}

}  // namespace

std::string csvText(const PlotFile& file, const ViewState& requested) {
    const ViewState view = clampedView(file, requested);
    std::ostringstream out;
    switch (file.kind) {
    case PlotKind::Profile: profile(out, file, view); break;
    case PlotKind::Plane:
    case PlotKind::Volume: slice(out, file, view); break;
    case PlotKind::Simulation:
    case PlotKind::Generated: bins(out, file, view); break;
    case PlotKind::Fit: observations(out, file, view); break;
    }
    return out.str();
}

}  // namespace bm::trazel
