#include "timevarying/var_output.h"

#include <algorithm>
#include <utility>

#include "model/number_text.h"
#include "files/text_file.h"
#include "model/output_text.h"
#include "model/table_text.h"
#include "shell/base/common_services.h"

namespace bm {

namespace {

std::string line(const std::string& text) { return outputLine(text); }
std::string shown(const std::string& value) { return shownValue(value); }

float resultAt(const DataSet& d, int index) { return index <= d.resultVar.ub() ? d.resultVar(index) : 0.0f; }

// The blocks of the times: "Time:, t" and the rows of values. The flat list
// holds time k, x i, y j at (k - 1) nx ny + (i - 1) ny + j; a line source's
// value is the same for every y, so its one row takes j = 1 of each x.
void appendTimeBlocks(std::string& out, const DataSet& d, bool point) {
    const int nt = d.numTTerms, nx = d.numXTerms, ny = d.numYTerms;
    if (nt <= 0) return;
    const std::size_t rows = point ? static_cast<std::size_t>(std::max(nx, 0)) : 1;
    out.reserve(out.size() + static_cast<std::size_t>(nt) * (tableRowBytes(1) + rows * tableRowBytes(point ? ny : nx)));
    TableText table(out);
    // A row of values from index `first` of the flat list, `step` apart.
    auto row = [&](int first, int count, int step) {
        for (int j = 0; j < count; ++j) {
            const float value = resultAt(d, first + j * step);
            if (j == 0) table.number(value);
            else table.field(value);
        }
        table.text(kCrlf);
    };
    for (int k = 1; k <= nt; ++k) {
        table.text("Time:, ");
        table.number(k <= d.varTValues.ub() ? d.varTValues(k) : 0.0f);
        table.text(kCrlf);
        if (point) {
            for (int i = 1; i <= nx; ++i) row((k - 1) * nx * ny + (i - 1) * ny + 1, ny, 1);
        } else {
            row((k - 1) * nx * ny + 1, nx, ny);
        }
    }
}

}  // namespace

std::string timeVaryingOutputText(const DataSet& d) {
    const std::string source = toLower(d.contaminantType);
    const bool point = contains(source, "point");
    if (!point && !contains(source, "line")) return {};

    std::string out;
    out += line("Ground Water");
    out += line(std::string("Model: ") + (point ? "Point Source" : "Line Source"));
    out += line("Dispersion Coefficient: " + d.aquiferType);
    out += line("Contaminant:" + d.contaminantType);
    out += line("Length Units: " + unitText(d.lengthUnit));
    out += line("Time Units: " + unitText(d.timeUnit));
    out += line("Concentration Units: " + unitText(d.concentrationUnit));
    out += line("Number of X Terms: " + printForm(static_cast<long long>(d.numXTerms)));
    if (point) out += line("Number of Y Terms: " + printForm(static_cast<long long>(d.numYTerms)));
    out += line("Number of Time Terms: " + printForm(static_cast<long long>(d.numTTerms)));
    out += line("Retardation Coefficient: " + d.retardation);
    out += line("Steady-state velocity in X-direction: " + d.velocityX);
    if (point) out += line("Steady-state velocity in Y-direction: " + d.velocityY);
    out += line("First Order Decay Coefficient: " + d.sourceDecayRate);
    out += line("Maximum Dispersivity: " + d.bulkDensity);
    out += line("Molecular Diffusion: " + d.saturation);
    out += line("Magnitude of Source: " + d.sourceMagnitude);
    out += line("Mean Travel Time: " + d.distributionCoefficient);
    out += line("Dispersion Ratio Coefficient: " + d.dispersionRatio);
    out += line("X Range: " + d.xRange);
    if (point) out += line("Y Range: " + d.yRange);
    out += line("Time Range: " + d.timeRange);
    out += dataFileNameLine(d);

    appendTimeBlocks(out, d, point);
    return out;
}

std::string timeVaryingMonteCarloOutputText(const DataSet& d) {
    const int n = d.mcResultVar.ub();
    std::string out;
    out += line("Monte Carlo");
    out += line("Type: Concentrations");
    out += line("Number of Terms: " + std::to_string(n < 0 ? 0 : n));
    out += line("Dispersion Coefficient: " + d.aquiferType + ", Contaminant Source: " + d.contaminantType);
    out += line("Time Varying Dispersion Coefficient");
    out += line("Chemical Name: ");
    out += line("Magnitude of Source: " + shown(d.sourceMagnitude));
    out += line("Retardation Coefficient: " + shown(d.retardation));
    out += line("Steady state velocity in X direction: " + shown(d.velocityX));
    out += line("Steady state velocity in Y direction: " + shown(d.velocityY));
    out += line("First order decay coefficient: " + shown(d.sourceDecayRate));
    out += line("Maximum Dispersivity: " + shown(d.bulkDensity));
    out += line("Molecular Diffusion: " + shown(d.saturation));
    out += line("Length Units: " + unitText(d.lengthUnit));
    out += line("Time Units: " + unitText(d.timeUnit));
    out += line("Concentration Units: " + unitText(d.concentrationUnit));
    out += dataFileNameLine(d);
    out += kCrlf;
    appendNumberLines(out, n, [&](int i) { return d.mcResultVar(i); });
    return out;
}

bool writeTimeVaryingOutput(const DataSet& data, const std::string& path) {
    std::string text = timeVaryingOutputText(data);
    if (text.empty()) return false;
    writeTextFile(path, std::move(text));
    return true;
}

void writeTimeVaryingMonteCarloOutput(const DataSet& data, std::string& file) {
    file += timeVaryingMonteCarloOutputText(data);
}

}  // namespace bm
