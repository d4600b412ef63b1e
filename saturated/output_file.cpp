#include "saturated/output_file.h"

#include <algorithm>

#include "files/text_file.h"
#include "model/model_kinds.h"
#include "model/number_text.h"
#include "model/output_text.h"
#include "model/table_text.h"
#include "montecarlo/pass/text_in_pieces.h"
#include "saturated/source_captions.h"
#include "shell/base/common_services.h"
#include "shell/base/runtime_error.h"

namespace bm {

namespace {

std::string line(const std::string& text) { return outputLine(text); }
std::string shown(const std::string& value) { return shownValue(value); }
int chemicalOf(const DataSet& d) { return selectedChemicalOf(d); }
std::string chemicalField(const List<std::string>& list, const DataSet& d) { return selectedChemicalField(list, d); }
std::string chemicalNameOf(const DataSet& d) { return selectedChemicalField(d.chemicalName, d); }

// The two-dimensional source-size line, by the caption of the source row.
std::string twoDimSourceLine(const DataSet& d, const char* widthLabel) {
    switch (twoDimSourceValueOf(twoDimSourceCaption(d.aquiferType, d.contaminantType))) {
    case TwoDimSourceValue::Width: return line(widthLabel + d.sourceWidth);
    case TwoDimSourceValue::StandardDeviation: return line("Standard Deviation: " + d.sourceStdDev);
    case TwoDimSourceValue::InjectionRate: break;
    }
    return line("Injection Rate: " + d.injectionRate);
}

// The values of the selected chemical (or the model's single list) a table
// row shows: z = 1 .. count at (x, y, t) in 3-D, t = 1 .. count at (x, y) in
// 2-D and at x in 1-D.
class ResultRows {
public:
    ResultRows(const DataSet& d, int dimension) : d_(d), dimension_(dimension), chemical_(chemicalOf(d)) {}
    // ", " and the value, for each of the row's values. Its two ends are read
    // with every subscript checked, so the values between lie in the array, a
    // fixed stride apart.
    void appendFields(TableText& text, int x, int y, int t, int count) const {
        if (count <= 0) return;
        const double* first = &at(x, y, 1, t);
        const std::ptrdiff_t stride = count > 1 ? (&at(x, y, count, t) - first) / (count - 1) : 0;
        for (int i = 0; i < count; ++i) text.field(first[i * stride]);
    }

private:
    const double& at(int x, int y, int i, int t) const {
        switch (dimension_) {
        case 1: return d_.multiChemical ? d_.chemResult1D(chemical_, x, i) : d_.result1D(x, i);
        case 2: return d_.multiChemical ? d_.chemResult2D(chemical_, x, y, i) : d_.result2D(x, y, i);
        default: return d_.multiChemical ? d_.chemResult3D(chemical_, x, y, i, t) : d_.result3D(x, y, i, t);
        }
    }

    const DataSet& d_;
    int dimension_;
    int chemical_;
};

// The heading of a time's block of a three-dimensional table, and its end.
void appendTimeHeading(TableText& out, const DataSet& d, int t, const std::string& timeUnit) {
    out.text("Time is ");
    out.number(d.tValues(t));
    out.text(" ");
    out.text(timeUnit);
    out.text(kCrlf);
    out.text("Z Coordinate =>");
    for (int z = 1; z <= d.numZTerms; ++z) out.field(d.zValues(z));
    out.text(kCrlf);
}

void appendTimeEnd(TableText& out) {
    out.text(kCrlf);
    out.text(kCrlf);
}

// The rows of the grid's points (x, y), over the calculation threads: "x, y"
// and the values across the row, of all times (2-D) or of the z of one time,
// each time a block under its own heading (3-D).
void appendPlaneRows(std::string& out, const DataSet& d, int dimension) {
    const int nx = d.numXTerms, ny = d.numYTerms, nz = d.numZTerms, nt = d.numTTerms;
    const long long plane = static_cast<long long>(std::max(nx, 0)) * std::max(ny, 0);
    const long long rows = dimension == 2 ? plane : plane * std::max(nt, 0);
    if (rows == 0) return;
    const ResultRows results(d, dimension);
    const std::string timeUnit = unitText(d.timeUnit);
    // A 3-D row carries a share of its time's heading.
    const std::size_t bytes = tableRowBytes(dimension == 2 ? nt : nz) + (dimension == 3 ? tableRowBytes(nz) / ny + 1 : 0);
    appendTextInPieces(out, rows, bytes, [&](long long first, long long last, std::string& piece) {
        TableText text(piece);
        for (long long row = first; row < last; ++row) {
            const long long inPlane = row % plane;
            const int x = static_cast<int>(inPlane / ny) + 1, y = static_cast<int>(inPlane % ny) + 1;
            const int t = static_cast<int>(row / plane) + 1;
            if (dimension == 3 && inPlane == 0) appendTimeHeading(text, d, t, timeUnit);
            text.number(d.xValues(x));
            text.field(d.yValues(y));
            results.appendFields(text, x, y, t, dimension == 2 ? nt : nz);
            text.text(kCrlf);
            if (dimension == 3 && inPlane == plane - 1) appendTimeEnd(text);
        }
    });
}

// The axis line of the times: "Time:" and a field for each.
void appendTimeAxis(std::string& out, const DataSet& d) {
    TableText text(out);
    text.text("Time:");
    for (int t = 1; t <= d.numTTerms; ++t) text.field(d.tValues(t));
}

void appendTable(std::string& out, const DataSet& d, int dimension) {
    const int nx = d.numXTerms, nt = d.numTTerms;
    if (dimension == 1) {
        appendTimeAxis(out, d);
        if (nx <= 0) return;
        const ResultRows results(d, 1);
        appendTextInPieces(out, nx, tableRowBytes(nt), [&](long long first, long long last, std::string& piece) {
            TableText text(piece);
            for (int x = static_cast<int>(first) + 1; x <= last; ++x) {
                text.text(kCrlf);
                text.number(d.xValues(x));
                results.appendFields(text, x, 0, 0, nt);
            }
        });
        return;
    }
    if (dimension == 2) {
        appendTimeAxis(out, d);
        out += kCrlf;
        if (nx > 0 && d.numYTerms > 0) appendPlaneRows(out, d, 2);
        return;
    }
    if (d.numXTerms > 0 && d.numYTerms > 0) {
        appendPlaneRows(out, d, 3);
    } else {  // blocks without rows
        TableText text(out);
        const std::string timeUnit = unitText(d.timeUnit);
        for (int t = 1; t <= nt; ++t) {
            appendTimeHeading(text, d, t, timeUnit);
            appendTimeEnd(text);
        }
    }
}

// The iterations of the dimension's Monte Carlo list (the selected chemical's in
// a multi-chemical model).
const IterationResults monteResults(const DataSet& d, int dimension) {
    const ModelKindInfo& kind = saturatedKindInfo(dimension, d.multiChemical);
    return kind.monteCarloResults(const_cast<DataSet&>(d), chemicalOf(d));  // read only
}

}  // namespace

std::string regularOutputText(const DataSet& d, int dimension) {
    std::string out;
    out += line("Ground Water");
    out += line("Model: " + d.modelType + (d.multiChemical ? " - Chemical " + chemicalNameOf(d) : std::string()));
    out += line("Aquifer: " + d.aquiferType);
    out += line("Contaminant:" + d.contaminantType);
    out += line("Length Units: " + unitText(d.lengthUnit));
    out += line("Time Units: " + unitText(d.timeUnit));
    out += line("Concentration Units: " + unitText(d.concentrationUnit));
    out += line("Number of X Terms: " + printForm(static_cast<long long>(d.numXTerms)));
    if (dimension >= 2) out += line("Number of Y Terms: " + printForm(static_cast<long long>(d.numYTerms)));
    if (dimension == 3) out += line("Number of Z Terms: " + printForm(static_cast<long long>(d.numZTerms)));
    out += line("Number of Time Terms: " + printForm(static_cast<long long>(d.numTTerms)));
    if (dimension >= 2) out += line("Y Center of Source: " + d.sourceYc);
    if (dimension == 3) {
        out += line("Z Center of Source: " + d.sourceZc);
        if (!contains(d.contaminantType, "Finite")) {
            out += line("X Center of Source: " + d.sourceXc);
            out += line("Injection Rate: " + d.injectionRate);
        } else {
            out += line("Contaminant Source Width: " + d.sourceWidth);
            out += line("Contaminant Source Height: " + d.sourceHeight);
        }
    }
    out += line("Initial Concentration: " + firstTermConcentration(d));
    out += line("Ground Water Darcy Velocity: " + d.velocity);
    if (dimension == 1) out += line("Aquifer Porosity: " + d.porosity);
    if (d.multiChemical) out += line("Contaminant Decay Coefficent: " + chemicalField(d.decayRate, d));
    else out += line("Contaminant Halflife: " + d.halfLife);
    out += line("Longitudinal Dispersion Coefficient: " + d.dispersionX);
    if (dimension >= 2) out += line("Lateral Dispersion Coefficient: " + d.dispersionY);
    if (dimension == 3) out += line("Vertical Dispersion Coefficient: " + d.dispersionZ);
    if (dimension == 2) out += twoDimSourceLine(d, "Width of Contaminant Source: ");
    if (dimension >= 2) {
        out += line("Aquifer Porosity: " + d.porosity);
        out += line("Net Recharge: " + d.netRecharge);
        out += line("Effective Aquifer Thickness: " + d.aquiferThickness);
    }
    out += line("Retardation Coefficient: " + d.retardation);
    out += dataFileNameLine(d);
    out += kCrlf;
    out += kCrlf;
    appendTable(out, d, dimension);
    return out;
}

std::string monteCarloOutputText(const DataSet& d, int dimension) {
    static const char* const modelNames[] = {"", "One Dimensional Model", "Two Dimensional Model", "Three Dimensional Model"};
    const std::string concentrationUnit = unitText(d.concentrationUnit);
    const IterationResults results = monteResults(d, dimension);
    const int iterations = results.upper();
    std::string out;
    out += line("Monte Carlo");
    out += line("Type: Concentrations");
    out += line("Number of Terms: " + std::to_string(iterations < 0 ? 0 : iterations));
    out += line("Aquifer: " + d.aquiferType + ", Contaminant:  " + d.contaminantType);
    out += line(std::string("Chemical Name: ") + modelNames[dimension]);
    if (d.multiChemical) {
        out += line("Chemical: " + chemicalNameOf(d));
        out += line("Contaminant Conc. at Inflow Boundary: " + shown(chemicalField(d.suppositionConcentration, d)) + " " +
                    concentrationUnit);
    } else {
        const std::string co = shown(firstTermConcentration(d));
        out += line((d.monteCarloModeOn ? "Contaminant Conc. at Inflow Boundary: " : "Initial Concentration (Co): ") + co +
                    " " + concentrationUnit);
    }
    out += line("Ground Water Darcy Velocity: " + shown(d.velocity));
    if (dimension == 1) out += line("Aquifer Porosity: " + shown(d.porosity));
    if (d.multiChemical) {
        out += line("Decay Rate: " + shown(chemicalField(d.decayRate, d)));
        out += line("Yield Factor: " + shown(chemicalField(d.yieldFactor, d)));
    } else {
        out += line("Contaminant Halflife: " + shown(d.halfLife));
    }
    out += line("Longitudinal Dispersion Coefficient: " + shown(d.dispersionX));
    if (dimension >= 2) out += line("Lateral Dispersion Coefficient: " + shown(d.dispersionY));
    if (dimension == 3) out += line("Vertical Dispersion Coefficient: " + shown(d.dispersionZ));
    if (dimension == 1) out += line("Retardation Coefficient: " + shown(d.retardation));
    out += line("Length Units: " + unitText(d.lengthUnit));
    out += line("Time Units: " + unitText(d.timeUnit));
    out += line("Concentration Units: " + concentrationUnit);
    if (dimension == 2) {
        switch (twoDimSourceValueOf(twoDimSourceCaption(d.aquiferType, d.contaminantType))) {
        case TwoDimSourceValue::Width: out += line("Width of Contaminant Source: " + shown(d.sourceWidth)); break;
        case TwoDimSourceValue::StandardDeviation: out += line("Standard Deviation: " + shown(d.sourceStdDev)); break;
        case TwoDimSourceValue::InjectionRate: out += line("Injection Rate: " + shown(d.injectionRate)); break;
        }
    }
    if (dimension == 3) {
        if (contains(d.contaminantType, "Finite")) {
            out += line("Contaminant Source Width: " + shown(d.sourceWidth));
            out += line("Contaminant Source Height: " + shown(d.sourceHeight));
        } else {
            out += line("X Center of Source: " + shown(d.sourceXc));
            out += line("Injection Rate: " + shown(d.injectionRate));
        }
    }
    if (dimension >= 2) {
        out += line("Aquifer Porosity: " + shown(d.porosity));
        out += line("Net Recharge: " + shown(d.netRecharge));
        out += line("Effective Aquifer Thickness: " + shown(d.aquiferThickness));
        out += line("Retardation Coefficient: " + shown(d.retardation));
    }
    out += dataFileNameLine(d);
    out += kCrlf;
    appendNumberLines(out, iterations, [&](int i) { return results(i); });
    return out;
}

void writeOutput1D(const DataSet& data, const std::string& path) { writeTextFile(path, regularOutputText(data, 1)); }
void writeOutput2D(const DataSet& data, const std::string& path) { writeTextFile(path, regularOutputText(data, 2)); }
void writeOutput3D(const DataSet& data, const std::string& path) { writeTextFile(path, regularOutputText(data, 3)); }
void writeMonteCarloOutput1D(const DataSet& data, std::string& file) { file += monteCarloOutputText(data, 1); }
void writeMonteCarloOutput2D(const DataSet& data, std::string& file) { file += monteCarloOutputText(data, 2); }
void writeMonteCarloOutput3D(const DataSet& data, std::string& file) { file += monteCarloOutputText(data, 3); }

}  // namespace bm
