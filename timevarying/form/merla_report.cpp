#include "timevarying/form/merla_report.h"

#include "model/number_text.h"
#include "model/output_text.h"
#include "timevarying/var_record.h"
#include "timevarying/var_rows.h"

namespace bm {

std::vector<PrintedLine> merlaReportLines(const DataSet& d) {
    std::vector<PrintedLine> out;
    const auto add = [&out](PrintedLine line) { out.push_back(std::move(line)); };
    const auto text = [&add](const std::string& s) { add({{0, s}}); };
    const auto blank = [&add] { add({}); };
    const auto value = [](const std::string& s) { return formatCell(s); };
    const bool point = !isLineSourceCode(varSourceCode(d.contaminantType));

    blank();
    blank();
    text("Saturated Ground Water Model with Time Dependent Dispersion Coefficients");
    blank();
    blank();
    appendReportNotes(out, d.title, d.author, d.comments);
    blank();
    text("Input Data file name: " + d.currentFileName);
    blank();

    // The model words stand in one column behind the longest label.
    add({{0, "Model: "}, {26, d.modelType}});
    add({{0, "Contaminant Source: "}, {26, d.contaminantType}});
    add({{0, "Dispersion Coefficient: "}, {26, d.aquiferType}});
    blank();
    appendReportUnits(out, d.lengthUnit, d.timeUnit, d.concentrationUnit);
    blank();

    appendCoordinateHeadings(out);
    add(coordinateRow(" X Axis", d.xRange));
    if (trim(d.yRange) == kNotUsed)
        add({{0, " Y Axis"}, {14, kNotUsed}});
    else
        add(coordinateRow(" Y Axis", d.yRange));
    add(coordinateRow(" Time Range", d.timeRange));

    blank();
    text(" Monte Carlo simulation at x: " + value(d.mcAtX));
    text(" Monte Carlo simulation at y: " + (trim(d.mcAtY) == kNotUsed ? std::string(kNotUsed) : value(d.mcAtY)));
    text(" Monte Carlo simulation at t: " + value(d.mcAtT));
    blank();

    // The property lines of the output file, each led by one blank.
    text("Properties:");
    text(" Retardation Coefficient: " + value(d.retardation));
    text(" Steady-state velocity in X-direction: " + value(d.velocityX));
    if (point) text(" Steady-state velocity in Y-direction: " + value(d.velocityY));
    text(" First Order Decay Coefficient: " + value(d.sourceDecayRate));
    text(" Maximum Dispersivity: " + value(d.bulkDensity));
    text(" Molecular Diffusion: " + value(d.saturation));
    text(" Magnitude of Source: " + value(d.sourceMagnitude));
    text(" Mean Travel Time: " + value(d.distributionCoefficient));
    text(" Dispersion Ratio Coefficient: " + value(d.dispersionRatio));
    return out;
}

std::string merlaReportText(const DataSet& data) {
    std::string out;
    for (const PrintedLine& line : merlaReportLines(data)) {
        std::string text = printedLineText(line);
        // A piece past its column went on a line of its own.
        for (std::size_t at = text.find('\n'); at != std::string::npos; at = text.find('\n', at + 2))
            text.replace(at, 1, kCrlf);
        out += outputLine(text);
    }
    return out;
}

}  // namespace bm
