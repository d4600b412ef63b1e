#include "fitting/fit_plot_file.h"

#include <algorithm>
#include <climits>
#include <cmath>

#include "files/text_file.h"
#include "fitting/fit_curves.h"
#include "model/number_text.h"
#include "model/output_text.h"

namespace bm {

namespace {

std::string withoutAmpersands(std::string text) {
    text.erase(std::remove(text.begin(), text.end(), '&'), text.end());
    return text;
}

const char* const kAxes[] = {"x", "y", "z"};

double& coordinate(FitPlotPlace& place, int axis) { return axis == 0 ? place.x : axis == 1 ? place.y : place.z; }

// --- reading -----------------------------------------------------------------

struct Unreadable {
    std::string text;
};
[[noreturn]] void fail(std::string text) { throw Unreadable{std::move(text)}; }
[[noreturn]] void failAt(int line, const std::string& text) { fail("Line " + std::to_string(line) + ": " + text); }

std::string quoted(std::string_view text) {
    constexpr std::size_t kMost = 60;
    return "\"" + std::string(text.substr(0, kMost)) + (text.size() > kMost ? "...\"" : "\"");
}

std::optional<double> number(std::string_view text) {
    const std::string cell = trim(text);
    if (!isNumeric(cell)) return std::nullopt;
    try {
        const double v = numericValue(cell);
        if (!std::isfinite(v)) return std::nullopt;
        return v;
    } catch (...) {
        return std::nullopt;
    }
}

std::vector<std::string> cells(std::string_view line) {
    std::vector<std::string> out;
    std::size_t start = 0;
    for (;;) {
        const std::size_t comma = line.find(',', start);
        out.push_back(trim(line.substr(start, comma == std::string_view::npos ? std::string_view::npos : comma - start)));
        if (comma == std::string_view::npos) return out;
        start = comma + 1;
    }
}

// A row of exactly `width` numbers ("t and C").
std::vector<double> row(std::string_view line, int lineNumber, std::size_t width, const std::string& what) {
    const std::vector<std::string> parts = cells(line);
    std::vector<double> values;
    for (const std::string& part : parts) {
        const auto v = number(part);
        if (!v) failAt(lineNumber, quoted(line) + " is not a row of numbers: " + quoted(part) + " is not a number.");
        values.push_back(*v);
    }
    if (values.size() != width)
        failAt(lineNumber, "a row of " + what + " holds " + std::to_string(width) + " values, but this one holds " +
                               std::to_string(values.size()) + ".");
    return values;
}

struct Labelled {
    std::string label, value;
};
std::optional<Labelled> labelled(std::string_view line) {
    const auto colon = line.find(':');
    if (colon == std::string_view::npos) return std::nullopt;
    return Labelled{trim(line.substr(0, colon)), trim(line.substr(colon + 1))};
}

bool same(std::string_view a, std::string_view b) { return toLower(a) == toLower(b); }

int wholeNumber(const std::string& text, int lineNumber, const std::string& what) {
    const auto v = number(text);
    if (!v || *v != std::floor(*v) || *v < 0 || *v > INT_MAX)
        failAt(lineNumber, what + " " + quoted(text) + " is not a whole number.");
    return static_cast<int>(*v);
}

// "x = 3, y = 0": the coordinates of a place, as many as the dimension.
FitPlotPlace placeOf(const std::string& text, int lineNumber, int dimension) {
    const std::vector<std::string> parts = cells(text);
    if (static_cast<int>(parts.size()) != dimension)
        failAt(lineNumber, "a place of this file has " + std::to_string(dimension) + " coordinate" +
                               (dimension == 1 ? "" : "s") + ", but " + quoted(text) + " gives " +
                               std::to_string(parts.size()) + ".");
    FitPlotPlace place;
    for (int axis = 0; axis < dimension; ++axis) {
        const std::string& part = parts[static_cast<std::size_t>(axis)];
        const auto equals = part.find('=');
        const auto v = equals == std::string::npos ? std::nullopt : number(part.substr(equals + 1));
        if (equals == std::string::npos || trim(part.substr(0, equals)) != kAxes[axis] || !v)
            failAt(lineNumber, quoted(part) + " should read \"" + kAxes[axis] + " = \" and a number.");
        coordinate(place, axis) = *v;
    }
    return place;
}

enum class Section { Header, Place, Curve, Observations };

struct Reader {
    FitPlot plot;
    std::optional<int> announcedPlaces, announcedObservations;
    bool dimensionGiven = false, concentrationGiven = false;
    Section section = Section::Header;
    int placeLine = 0;

    void headerLine(const Labelled& h, int n) {
        plot.header.emplace_back(h.label, h.value);
        const std::string& v = h.value;
        if (same(h.label, "Model")) plot.model = v;
        else if (same(h.label, "Aquifer")) plot.aquifer = v;
        else if (same(h.label, "Contaminant")) plot.contaminant = v;
        else if (same(h.label, "Length Units")) plot.lengthUnit = v;
        else if (same(h.label, "Time Units")) plot.timeUnit = v;
        else if (same(h.label, "Concentration Units")) plot.concentrationUnit = v;
        else if (same(h.label, "Data File Name")) plot.dataFile = v;
        else if (same(h.label, "Observation File")) plot.observationFile = v;
        else if (same(h.label, "Concentration")) {
            if (v != "C/Co" && v != "C") failAt(n, "the concentration should be \"C/Co\" or \"C\", not " + quoted(v) + ".");
            plot.relative = v == "C/Co";
            concentrationGiven = true;
        } else if (same(h.label, "Dimension")) {
            const int d = wholeNumber(v, n, "the dimension");
            if (d < 1 || d > 3) failAt(n, "the dimension should be 1, 2 or 3, not " + quoted(v) + ".");
            plot.dimension = d;
            dimensionGiven = true;
        } else if (same(h.label, "Estimate")) {
            const auto equals = v.rfind('=');
            const auto value = equals == std::string::npos ? std::nullopt : number(v.substr(equals + 1));
            if (!value || trim(v.substr(0, equals)).empty())
                failAt(n, "an estimate should read \"Estimate: NAME = \" and a number, not " + quoted(v) + ".");
            plot.estimates.push_back({trim(v.substr(0, equals)), *value});
        } else if (same(h.label, "RMSE") || same(h.label, "R Squared")) {
            const auto value = number(v);
            if (!value) failAt(n, "the " + h.label + " " + quoted(v) + " is not a number.");
            (same(h.label, "RMSE") ? plot.rmse : plot.rSquared) = *value;
        } else if (same(h.label, "Number of Places")) {
            announcedPlaces = wholeNumber(v, n, "the number of places");
        } else if (same(h.label, "Number of Observations")) {
            announcedObservations = wholeNumber(v, n, "the number of observations");
        }
    }

    void endPlace() {
        if (plot.places.empty()) return;
        const FitPlotPlace& p = plot.places.back();
        const std::string where = placeText(p.x, p.y, p.z, plot.dimension);
        if (p.times.empty()) failAt(placeLine, "the place " + where + " has no fitted curve.");
        if (p.observations.empty()) failAt(placeLine, "the place " + where + " has no observations.");
    }

    void line(std::string_view text, int n) {
        const auto h = labelled(text);
        if (h && same(h->label, "Place")) {
            if (!dimensionGiven) failAt(n, "the header lacks the line \"Dimension: \" before the first place.");
            if (!concentrationGiven) failAt(n, "the header lacks the line \"Concentration: \" before the first place.");
            endPlace();
            plot.places.push_back(placeOf(h->value, n, plot.dimension));
            placeLine = n;
            section = Section::Place;
            return;
        }
        if (section == Section::Header) {
            if (!h) failAt(n, quoted(text) + " is not a header line \"Label: value\".");
            headerLine(*h, n);
            return;
        }
        if (h && same(h->label, "Fitted Curve")) {
            if (section != Section::Place) failAt(n, "a place has one fitted curve, before its observations.");
            section = Section::Curve;
            return;
        }
        if (h && same(h->label, "Observations")) {
            if (section != Section::Curve) failAt(n, "the observations of a place follow its fitted curve.");
            section = Section::Observations;
            return;
        }
        FitPlotPlace& place = plot.places.back();
        if (section == Section::Place) failAt(n, "\"Fitted Curve: t, C\" was expected, not " + quoted(text) + ".");
        if (section == Section::Curve) {
            const auto v = row(text, n, 2, "the fitted curve (t, C)");
            place.times.push_back(v[0]);
            place.values.push_back(v[1]);
            return;
        }
        const auto v = row(text, n, 5, "observations (n, t, C, fitted, residual)");
        if (v[0] < 1 || v[0] != std::floor(v[0]) || v[0] > INT_MAX)
            failAt(n, "the observation's number " + quoted(cells(text)[0]) + " is not a whole number from 1.");
        place.observations.push_back({static_cast<int>(v[0]), v[1], v[2], v[3], v[4]});
    }

    void finish() {
        if (plot.places.empty()) fail("The file has no places (no line begins with \"Place:\").");
        endPlace();
        if (announcedPlaces && *announcedPlaces != static_cast<int>(plot.places.size()))
            fail("The header announces " + std::to_string(*announcedPlaces) + " places but the file holds " +
                 std::to_string(plot.places.size()) + ".");
        if (announcedObservations && *announcedObservations != static_cast<int>(plot.observationCount()))
            fail("The header announces " + std::to_string(*announcedObservations) +
                 " observations but the file holds " + std::to_string(plot.observationCount()) + ".");
    }
};

}  // namespace

std::size_t FitPlot::observationCount() const {
    std::size_t n = 0;
    for (const FitPlotPlace& p : places) n += p.observations.size();
    return n;
}

std::optional<FitPlot> fitPlotOf(const DataSet& model, const FitReport& report, UserInterface& ui, int points) {
    const std::vector<FitCurve> curves = fittedCurves(model, report, ui, points, INT_MAX);
    if (curves.empty()) return std::nullopt;
    FitPlot plot;
    plot.model = model.modelType;
    plot.aquifer = model.aquiferType;
    plot.contaminant = model.contaminantType;
    plot.lengthUnit = withoutAmpersands(model.lengthUnit);
    plot.timeUnit = withoutAmpersands(model.timeUnit);
    plot.concentrationUnit = withoutAmpersands(model.concentrationUnit);
    plot.relative = report.relative;
    plot.dimension = report.dimension;
    plot.dataFile = trim(model.currentFileName).empty() ? "Input Data Not Saved" : trim(model.currentFileName);
    plot.observationFile = report.observed.fileName;
    for (const FitEstimate& e : report.estimates) plot.estimates.push_back({e.name, e.value});
    plot.rmse = report.rmse;
    plot.rSquared = report.rSquared;
    for (const FitCurve& curve : curves) {
        FitPlotPlace place;
        place.x = curve.x;
        place.y = curve.y;
        place.z = curve.z;
        place.times = curve.times;
        place.values = curve.values;
        for (const int i : curve.members) {
            const auto k = static_cast<std::size_t>(i);
            const Observation& o = report.observed.points[k];
            place.observations.push_back({i + 1, o.t, o.concentration, report.modelled[k], report.residuals[k]});
        }
        plot.places.push_back(std::move(place));
    }
    return plot;
}

std::string fitPlotText(const FitPlot& plot) {
    std::string out = std::string(kFitPlotFirstLine) + kCrlf;
    auto line = [&out](const std::string& label, const std::string& value) { out += label + ": " + value + kCrlf; };
    line("Model", plot.model);
    line("Aquifer", plot.aquifer);
    line("Contaminant", plot.contaminant);
    line("Length Units", plot.lengthUnit);
    line("Time Units", plot.timeUnit);
    line("Concentration Units", plot.concentrationUnit);
    line("Concentration", plot.relative ? "C/Co" : "C");
    line("Dimension", std::to_string(plot.dimension));
    line("Data File Name", plot.dataFile);
    line("Observation File", plot.observationFile);
    for (const FitPlotEstimate& e : plot.estimates) line("Estimate", e.name + " = " + generalText(e.value));
    if (plot.rmse) line("RMSE", generalText(*plot.rmse));
    if (plot.rSquared) line("R Squared", generalText(*plot.rSquared));
    line("Number of Places", std::to_string(plot.places.size()));
    line("Number of Observations", std::to_string(plot.observationCount()));
    for (const FitPlotPlace& p : plot.places) {
        out += kCrlf;
        line("Place", placeText(p.x, p.y, p.z, plot.dimension));
        line("Fitted Curve", "t, C");
        for (std::size_t k = 0; k < p.times.size(); ++k) out += generalText(p.times[k]) + ", " + generalText(p.values[k]) + kCrlf;
        line("Observations", "n, t, C, fitted, residual");
        for (const FitPlotObservation& o : p.observations)
            out += std::to_string(o.number) + ", " + generalText(o.t) + ", " + generalText(o.observed) + ", " +
                   generalText(o.fitted) + ", " + generalText(o.residual) + kCrlf;
    }
    return out;
}

FitPlotReading parseFitPlot(std::string_view text) {
    FitPlotReading reading;
    Reader reader;
    try {
        bool first = true;
        int n = 0;
        std::size_t start = 0;
        while (start < text.size()) {
            std::size_t end = text.find('\n', start);
            if (end == std::string_view::npos) end = text.size();
            std::string_view raw = text.substr(start, end - start);
            if (!raw.empty() && raw.back() == '\r') raw.remove_suffix(1);
            const std::string line = trim(raw);
            start = end + 1;
            ++n;
            if (line.empty()) continue;
            if (first) {
                if (line != kFitPlotFirstLine)
                    failAt(n, "a fit's plot file begins with \"" + std::string(kFitPlotFirstLine) + "\", not " + quoted(line) + ".");
                first = false;
                continue;
            }
            reader.line(line, n);
        }
        if (first) fail("The file is empty.");
        reader.finish();
        reading.plot = std::move(reader.plot);
    } catch (const Unreadable& u) {
        reading.problem = u.text;
    }
    return reading;
}

void writeFitPlot(const std::string& path, const FitPlot& plot) { writeTextFile(path, fitPlotText(plot)); }

}  // namespace bm
