#include "files/block_parts.h"

#include <algorithm>

#include "model/number_text.h"
#include "shell/base/checked_math.h"
#include "shell/base/runtime_error.h"

namespace bm::blockparts {

namespace {

// Largest array a reader will make from the counts of a file: 2^26 elements.
constexpr long double kMaxElements = 67108864.0L;

bool isSaturated(BlockLayout layout) {
    return layout == BlockLayout::OneDimensional || layout == BlockLayout::TwoDimensional ||
           layout == BlockLayout::ThreeDimensional;
}

bool hasY(BlockLayout layout) {
    return layout == BlockLayout::TwoDimensional || layout == BlockLayout::ThreeDimensional;
}

// The retardation step: `line` in hand is the retardation row or, in files
// without it, already the separator.
void retardationStep(DataSet& d, FieldInput& in, const std::string& line) {
    if (contains(toLower(line), "retardation")) {
        d.retardation = textAfter(line, ":");
        in.lineInput();  // the separator
    } else {
        d.retardation = "1";
    }
}

}  // namespace

std::string labelField(FieldInput& in) { return textAfter(in.lineInput(), ":"); }

std::int16_t countFrom(std::string_view text) { return toInt16(textValue(text)); }

std::int16_t countOfBound(int upperBound) { return checkedInt16(std::max(upperBound, 0)); }

void requireMemoryFor(long double elements) {
    if (elements > kMaxElements) raiseError(err::OutOfMemory);
}

void writeCoordinates(const DataSet& d, PrintOutput& out, BlockLayout layout) {
    const bool three = layout == BlockLayout::ThreeDimensional;
    out.printLine("Coor Data");
    out.printLine("X: " + d.xRange);
    if (hasY(layout)) out.printLine("Y: " + d.yRange);
    if (three) out.printLine("Z: " + d.zRange);
    out.printLine("Time: " + d.timeRange);
    if (hasY(layout)) {
        out.printLine("Xc: " + d.sourceXc);
        out.printLine("Yc: " + d.sourceYc);
    }
    if (three) out.printLine("Zc: " + d.sourceZc);
    out.printLine("Monte Carlo simulation at x: " + d.mcAtX);
    if (hasY(layout)) out.printLine("Monte Carlo simulation at y: " + d.mcAtY);
    if (three) out.printLine("Monte Carlo simulation at z: " + d.mcAtZ);
    out.printLine("Monte Carlo simulation at t: " + d.mcAtT);
    out.printLine();
}

void readCoordinates(DataSet& d, FieldInput& in, BlockLayout layout) {
    const bool three = layout == BlockLayout::ThreeDimensional;
    in.lineInput();  // "Coor Data"
    d.xRange = labelField(in);
    if (hasY(layout)) d.yRange = labelField(in);
    if (three) d.zRange = labelField(in);
    d.timeRange = labelField(in);
    if (hasY(layout)) {
        d.sourceXc = labelField(in);
        d.sourceYc = labelField(in);
    }
    if (three) d.sourceZc = labelField(in);
    d.mcAtX = labelField(in);
    if (hasY(layout)) d.mcAtY = labelField(in);
    if (three) d.mcAtZ = labelField(in);
    d.mcAtT = labelField(in);
    in.lineInput();  // empty line
}

void writeProperties(DataSet& d, PrintOutput& out, BlockLayout layout, bool withHalfLife) {
    out.printLine("Properties:");
    if (isSaturated(layout)) {
        out.printLine("Velocity: " + d.velocity);
        if (withHalfLife) out.printLine("HalfLife: " + d.halfLife);
        out.printLine("Dispersion_X: " + d.dispersionX);
        if (hasY(layout)) out.printLine("Dispersion_y: " + d.dispersionY);
        if (layout == BlockLayout::ThreeDimensional) out.printLine("Dispersion_z: " + d.dispersionZ);
        out.printLine("Aquifer Porosity: " + d.porosity);
        if (hasY(layout)) {
            out.printLine("Net Recharge: " + d.netRecharge);
            out.printLine("Effective Aquifer Thickness: " + d.aquiferThickness);
            out.printLine("Width: " + d.sourceWidth);
            if (layout == BlockLayout::TwoDimensional) out.printLine("Standard Deviation: " + d.sourceStdDev);
            else out.printLine("Height: " + d.sourceHeight);
            out.printLine("Injection Rate: " + d.injectionRate);
        }
        if (trim(d.retardation).empty()) d.retardation = "1";
        out.printLine("Retardation Coefficient (R): " + d.retardation);
    } else {  // unsaturated
        out.printLine("Steady-State Percolation Rate: " + d.velocity);
        out.printLine("Dispersion_X: " + d.dispersionX);
        if (withHalfLife) out.printLine("HalfLife: " + d.halfLife);
        out.printLine("Bulk Density: " + d.bulkDensity);
        out.printLine("Contaminant Distribution Coefficient: " + d.distributionCoefficient);
        out.printLine("Aquifer Porosity: " + d.porosity);
        out.printLine("Saturation: " + d.saturation);
        if (d.contaminantType != "Dirichlet") out.printLine("Source Concentration Decay Rate: " + d.sourceDecayRate);
    }
    out.printLine();
}

void readProperties(DataSet& d, FieldInput& in, BlockLayout layout, bool withHalfLife) {
    in.lineInput();  // "Properties:"
    if (!isSaturated(layout)) {  // unsaturated: positional
        d.velocity = labelField(in);
        d.dispersionX = labelField(in);
        if (withHalfLife) d.halfLife = labelField(in);
        d.bulkDensity = labelField(in);
        d.distributionCoefficient = labelField(in);
        d.porosity = labelField(in);
        d.saturation = labelField(in);
        if (d.contaminantType != "Dirichlet") d.sourceDecayRate = labelField(in);
        in.lineInput();  // the separator
        return;
    }
    d.velocity = labelField(in);
    if (withHalfLife) d.halfLife = labelField(in);
    d.dispersionX = labelField(in);
    if (layout == BlockLayout::OneDimensional) {
        // Earlier files have no porosity row, or neither porosity nor retardation.
        std::string line = in.lineInput();
        if (contains(toLower(line), "porosity")) {
            d.porosity = textAfter(line, ":");
            line = in.lineInput();
        }
        retardationStep(d, in, line);
        return;
    }
    d.dispersionY = labelField(in);
    if (layout == BlockLayout::ThreeDimensional) d.dispersionZ = labelField(in);
    d.porosity = labelField(in);
    // Earlier files have no Net Recharge and Effective Aquifer Thickness rows.
    std::string line = in.lineInput();
    if (contains(line, "Net Recharge")) {
        d.netRecharge = textAfter(line, ":");
        d.aquiferThickness = labelField(in);
        line = in.lineInput();
    }
    d.sourceWidth = textAfter(line, ":");
    if (layout == BlockLayout::TwoDimensional) d.sourceStdDev = labelField(in);
    else d.sourceHeight = labelField(in);
    d.injectionRate = labelField(in);
    retardationStep(d, in, in.lineInput());
}

void writeTerms(DataSet& d, PrintOutput& out) {
    const std::int16_t n = settleSuperpositionIndex(d);
    out.printLine("Superposition Index: " + plainInteger(n));
    out.printLine();
    for (int i = 1; i <= n; ++i) {
        out.printLine("T" + signedFieldInteger(i) + ": " + d.terms(i).time);
        out.printLine("Concentration: " + d.terms(i).concentration);
        out.printLine();
    }
}

void readTerms(DataSet& d, FieldInput& in) {
    d.superpositionIndex = countFrom(labelField(in));
    in.lineInput();  // empty line
    const int n = d.superpositionIndex;
    // A hand-made index below 1 still leaves the first term to test below.
    d.terms.redimPreserve(std::max(n, 1));
    for (int i = 1; i <= n; ++i) {
        d.terms(i).time = labelField(in);
        d.terms(i).concentration = labelField(in);
        in.lineInput();  // empty line
    }
    std::string& first = d.terms(1).concentration;
    if (contains(first, "Monte")) {
        d.monteCarloValueInUse = true;
        d.monteCarloModeOn = true;  // the file's inflow concentration varies
        first = std::string(static_cast<std::size_t>(boundaryMarkerPadding(d.modelType)), ' ') + trim(first);
    } else {
        d.monteCarloValueInUse = false;
        d.monteCarloModeOn = false;
    }
}

}  // namespace bm::blockparts
