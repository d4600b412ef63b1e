#include "saturated/output_file.h"

#include <algorithm>

#include "files/text_file.h"
#include "model/model_kinds.h"
#include "model/number_text.h"
#include "model/output_text.h"
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

double result(const DataSet& d, int dimension, int x, int y, int z, int t) {
    const int c = chemicalOf(d);
    switch (dimension) {
    case 1: return d.multiChemical ? d.chemResult1D(c, x, t) : d.result1D(x, t);
    case 2: return d.multiChemical ? d.chemResult2D(c, x, y, t) : d.result2D(x, y, t);
    default: return d.multiChemical ? d.chemResult3D(c, x, y, z, t) : d.result3D(x, y, z, t);
    }
}

// ", " and the number's text.
void appendField(std::string& out, double value) {
    out += ", ";
    out += formatNumber(value);
}

// The heading of a time's block of a three-dimensional table, and its end.
void appendTimeHeading(std::string& out, const DataSet& d, int t) {
    out += line("Time is " + formatNumber(d.tValues(t)) + " " + unitText(d.timeUnit));
    out += "Z Coordinate =>";
    for (int z = 1; z <= d.numZTerms; ++z) appendField(out, d.zValues(z));
    out += kCrlf;
}

void appendTimeEnd(std::string& out) {
    out += kCrlf;
    out += kCrlf;
}

// The rows of the grid's points (x, y), over the calculation threads: "x, y"
// and the values across the row, of all times (2-D) or of the z of one time,
// each time a block under its own heading (3-D).
void appendPlaneRows(std::string& out, const DataSet& d, int dimension) {
    const int nx = d.numXTerms, ny = d.numYTerms, nz = d.numZTerms, nt = d.numTTerms;
    const long long plane = static_cast<long long>(std::max(nx, 0)) * std::max(ny, 0);
    const long long rows = dimension == 2 ? plane : plane * std::max(nt, 0);
    if (rows == 0) return;
    appendTextInPieces(out, rows, [&](long long first, long long last, std::string& piece) {
        for (long long row = first; row < last; ++row) {
            const long long inPlane = row % plane;
            const int x = static_cast<int>(inPlane / ny) + 1, y = static_cast<int>(inPlane % ny) + 1;
            const int t = static_cast<int>(row / plane) + 1;
            if (dimension == 3 && inPlane == 0) appendTimeHeading(piece, d, t);
            piece += formatNumber(d.xValues(x));
            appendField(piece, d.yValues(y));
            if (dimension == 2)
                for (int k = 1; k <= nt; ++k) appendField(piece, result(d, 2, x, y, 0, k));
            else
                for (int z = 1; z <= nz; ++z) appendField(piece, result(d, 3, x, y, z, t));
            piece += kCrlf;
            if (dimension == 3 && inPlane == plane - 1) appendTimeEnd(piece);
        }
    });
}

std::string table(const DataSet& d, int dimension) {
    std::string out;
    const int nx = d.numXTerms, nt = d.numTTerms;
    if (dimension == 1) {
        out += "Time:";
        for (int t = 1; t <= nt; ++t) appendField(out, d.tValues(t));
        if (nx <= 0) return out;
        appendTextInPieces(out, nx, [&](long long first, long long last, std::string& piece) {
            for (int x = static_cast<int>(first) + 1; x <= last; ++x) {
                piece += kCrlf;
                piece += formatNumber(d.xValues(x));
                for (int t = 1; t <= nt; ++t) appendField(piece, result(d, 1, x, 0, 0, t));
            }
        });
        return out;
    }
    if (dimension == 2) {
        out += "Time:";
        for (int t = 1; t <= nt; ++t) appendField(out, d.tValues(t));
        out += kCrlf;
        if (nx > 0 && d.numYTerms > 0) appendPlaneRows(out, d, 2);
        return out;
    }
    if (d.numXTerms > 0 && d.numYTerms > 0) {
        appendPlaneRows(out, d, 3);
    } else {  // blocks without rows
        for (int t = 1; t <= nt; ++t) {
            appendTimeHeading(out, d, t);
            appendTimeEnd(out);
        }
    }
    return out;
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
    out += table(d, dimension);
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
    for (int i = 1; i <= iterations; ++i) out += line(formatNumber(results(i)));
    return out;
}

void writeOutput1D(const DataSet& data, const std::string& path) { writeTextFile(path, regularOutputText(data, 1)); }
void writeOutput2D(const DataSet& data, const std::string& path) { writeTextFile(path, regularOutputText(data, 2)); }
void writeOutput3D(const DataSet& data, const std::string& path) { writeTextFile(path, regularOutputText(data, 3)); }
void writeMonteCarloOutput1D(const DataSet& data, std::string& file) { file += monteCarloOutputText(data, 1); }
void writeMonteCarloOutput2D(const DataSet& data, std::string& file) { file += monteCarloOutputText(data, 2); }
void writeMonteCarloOutput3D(const DataSet& data, std::string& file) { file += monteCarloOutputText(data, 3); }

}  // namespace bm
