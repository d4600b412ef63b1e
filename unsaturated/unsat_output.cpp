#include "unsaturated/unsat_output.h"

#include <algorithm>

#include "model/number_text.h"
#include "files/text_file.h"
#include "model/output_text.h"
#include "model/table_text.h"
#include "shell/base/common_services.h"
#include "unsaturated/unsat_parameters.h"

namespace bm {

namespace {

std::string line(const std::string& text) { return outputLine(text); }
std::string chemicalField(const List<std::string>& list, const DataSet& d) { return selectedChemicalField(list, d); }
std::string firstConcentration(const DataSet& d) { return firstTermConcentration(d); }

std::string count(long long n) { return std::to_string(n); }

bool decayingSource(const DataSet& d) { return d.contaminantType != kUnsatDirichlet; }

}  // namespace

std::string unsatPlotText(const DataSet& d) {
    std::string out;
    out += line("Ground Water");
    out += line("Model: " + d.modelType + (d.multiChemical ? " - Chemical " + chemicalField(d.chemicalName, d) : ""));
    out += line("Aquifer: " + d.aquiferType);
    out += line("Contaminant:" + d.contaminantType);
    out += line("Length Units: " + unitText(d.lengthUnit));
    out += line("Time Units: " + unitText(d.timeUnit));
    out += line("Concentration Units: " + unitText(d.concentrationUnit));
    out += line("Number of X Terms: " + count(d.numXTerms));
    out += line("Number of Time Terms: " + count(d.numTTerms));
    out += line("Initial Concentration: " + firstConcentration(d));
    out += line("Groundwater Steady-State Percolation Rate: " + d.velocity);
    out += line("Dispersion Coefficient: " + d.dispersionX);
    if (d.multiChemical) out += line("Contaminant Decay Coefficent: " + chemicalField(d.decayRate, d));
    else out += line("Contaminant Halflife: " + d.halfLife);
    out += line("Bulk Density: " + d.bulkDensity);
    out += line("Contaminant Distribution Coefficient: " + d.distributionCoefficient);
    out += line("Aquifer Porosity: " + d.porosity);
    out += line("Saturation: " + d.saturation);
    if (decayingSource(d)) out += line("Source Concentration Decay Rate: " + d.sourceDecayRate);
    out += dataFileNameLine(d);
    out += kCrlf;
    out += kCrlf;
    out.reserve(out.size() + static_cast<std::size_t>(std::max<int>(d.numXTerms, 0) + 1) * tableRowBytes(d.numTTerms));
    {
        TableText table(out);
        table.text("Time:");
        for (int t = 1; t <= d.numTTerms; ++t) table.field(d.tValues(t));
        for (int x = 1; x <= d.numXTerms; ++x) {
            table.text(kCrlf);
            table.number(d.xValues(x));
            for (int t = 1; t <= d.numTTerms; ++t) table.field(d.resultUnsat(x, t));
        }
    }
    return out;
}

void writeUnsatPlotFile(const DataSet& data, const std::string& path) { writeTextFile(path, unsatPlotText(data)); }

std::string unsatMonteCarloText(const DataSet& d) {
    // Every value is shown as the number a marker carries.
    const auto shown = [](const std::string& value) { return valueOfCell(value); };
    const std::string concentrationUnit = unitText(d.concentrationUnit);
    const int iterations = d.mcResultUnsat.ub() < 0 ? 0 : d.mcResultUnsat.ub();
    std::string out;
    out += line("Monte Carlo");
    out += line("Type: Concentrations");
    out += line("Number of Terms: " + count(iterations));
    out += line("Aquifer: " + d.aquiferType + ", Contaminant: " + d.contaminantType);
    out += line("Chemical Name: Unsaturated One Dimensional Model");
    if (d.multiChemical) {
        out += line("Chemical: " + chemicalField(d.chemicalName, d));
        out += line("Contaminant Conc. at Inflow Boundary: " + shown(chemicalField(d.suppositionConcentration, d)) +
                    " " + concentrationUnit);
    } else {
        out += line((d.monteCarloModeOn ? "Contaminant Conc. at Inflow Boundary: " : "Initial Concentration (Co): ") +
                    shown(firstConcentration(d)) + " " + concentrationUnit);
    }
    out += line("Steady-State Percolation Rate: " + shown(d.velocity));
    out += line("Dispersion Coefficient: " + shown(d.dispersionX));
    if (d.multiChemical) {
        out += line("Decay Rate: " + shown(chemicalField(d.decayRate, d)));
        out += line("Yield Factor: " + shown(chemicalField(d.yieldFactor, d)));
    } else {
        out += line("Contaminant Halflife: " + shown(d.halfLife));
    }
    out += line("Bulk Density: " + shown(d.bulkDensity));
    out += line("Contaminant Distribution Coefficient: " + shown(d.distributionCoefficient));
    out += line("Aquifer Porosity: " + shown(d.porosity));
    out += line("Saturation: " + shown(d.saturation));
    if (decayingSource(d)) out += line("Source Concentration Decay Rate: " + shown(d.sourceDecayRate));
    out += line("Length Units: " + unitText(d.lengthUnit));
    out += line("Time Units: " + unitText(d.timeUnit));
    out += line("Concentration Units: " + concentrationUnit);
    out += dataFileNameLine(d);
    out += kCrlf;
    appendNumberLines(out, iterations, [&](int i) { return d.mcResultUnsat(i); });
    return out;
}

void writeUnsatMonteCarloFile(const DataSet& data, std::string& file) { file += unsatMonteCarloText(data); }

}  // namespace bm
