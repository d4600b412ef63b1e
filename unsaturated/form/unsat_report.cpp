#include "unsaturated/form/unsat_report.h"

#include "model/number_text.h"

namespace bm {

std::vector<PrintedLine> unsatReportLines(const DataSet& d, const std::vector<UnsatRow>& rows) {
    std::vector<PrintedLine> out;
    const auto text = [&out](const std::string& s) { out.push_back({{0, s}}); };
    const auto blank = [&out] { out.push_back({}); };
    const auto unitOf = [&rows](int row) { return rows.at(static_cast<std::size_t>(row)).unitCaption; };
    const auto property = [&](const std::string& label, const std::string& value, int row) {
        out.push_back({{0, label}, {50, formatCell(value) + " " + unitOf(row)}});
    };

    appendReportHead(out, "Unsaturated Ground Water Model", d);
    appendCoordinateHeadings(out);
    out.push_back(coordinateRow(" Depth Range", d.xRange));
    out.push_back(coordinateRow(" Time Range", d.timeRange));
    blank();
    text(" Monte Carlo simulation at x: " + formatCell(d.mcAtX));
    text(" Monte Carlo simulation at t: " + formatCell(d.mcAtT));
    blank();

    appendReportTerms(out, d);
    text("Field and Chemical Properties:");
    property("  Ground Water Steady-State Percolation Rate: ", d.velocity, unsatrow::Percolation);
    property("  Dispersion Coefficient(Dv): ", d.dispersionX, unsatrow::Dispersion);
    // A chain's chemicals have their rates in place of the half-life.
    if (d.multiChemical)
        appendChemicalProperties(out, d);
    else
        property("  Contaminant HalfLife: ", d.halfLife, unsatrow::HalfLife);
    property("  Bulk Density: ", d.bulkDensity, unsatrow::BulkDensity);
    property("  Contaminant Distribution Coefficient(Kdv): ", d.distributionCoefficient, unsatrow::Distribution);
    property("  Aquifer Porosity: ", d.porosity, unsatrow::Porosity);
    property("  Saturation(Sw): ", d.saturation, unsatrow::Saturation);
    if (!unsatConstantSource(d.contaminantType))
        property("  Source Concentration Decay Rate: ", d.sourceDecayRate, unsatrow::SourceDecay);
    if (d.multiChemical) appendChemicalResults(out, d);
    return out;
}

}  // namespace bm
