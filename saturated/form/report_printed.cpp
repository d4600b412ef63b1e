#include "saturated/form/report_printed.h"

#include <algorithm>
#include <set>

#include "model/number_text.h"
#include "model/ranges.h"
#include "model/units.h"
#include "montecarlo/pass/calculation_pass.h"
#include "saturated/form/input_form_model.h"
#include "shell/base/common_services.h"
#include "shell/base/error_handler.h"
#include "shell/base/runtime_error.h"

namespace bm {

namespace {

PrintedLine text(const std::string& s) { return {{0, s}}; }
PrintedLine blank() { return {}; }


std::string value(const std::string& s) { return formatCell(s); }

// The unit label of the row that shows a field, on the screen at hand.
std::string unitOf(const InputFormModel& form, RowField field) {
    if (form.dimension() < 1) return {};
    for (const FormRow& r : form.rows(form.dimension()))
        if (r.field == field) return r.unitCaption;
    return {};
}

// The source labels are padded to one length so that their values stand in one
// column: the value is set at the column behind the label (the same text, and
// a column stop for a printer whose letters differ in width).
PrintedLine labelled(const std::string& label, const std::string& v, const std::string& unit) {
    return {{0, label}, {static_cast<int>(label.size()) + 1, v + " " + unit}};
}

PrintedLine property(const std::string& label, const std::string& v, const std::string& unit) {
    return {{0, label}, {50, v + " " + unit}};
}

}  // namespace

std::vector<PrintedLine> printedReportLines(const InputFormModel& form) {
    const DataSet& d = form.data();
    const int dim = form.dimension();
    std::vector<PrintedLine> out;
    const auto add = [&out](PrintedLine line) { out.push_back(std::move(line)); };

    appendReportHead(out, "Saturated Ground Water Model", d);

    appendCoordinateHeadings(out);
    const auto axis = [&](const std::string& name, const std::string& rangeText) { add(coordinateRow(name, rangeText)); };
    axis(" X Axis", d.xRange);
    if (dim >= 2) axis(" Y Axis", d.yRange);
    if (dim >= 3) axis(" Z Axis", d.zRange);
    axis(" Time Range", d.timeRange);

    add(blank());
    add(text(" Monte Carlo simulation at x: " + value(d.mcAtX)));
    if (dim >= 2) add(text(" Monte Carlo simulation at y: " + value(d.mcAtY)));
    if (dim >= 3) add(text(" Monte Carlo simulation at z: " + value(d.mcAtZ)));
    add(text(" Monte Carlo simulation at t: " + value(d.mcAtT)));
    add(blank());

    appendReportTerms(out, d);

    // The source, by model.
    const std::string aquifer = toLower(trim(d.aquiferType));
    const std::string& c = d.contaminantType;
    const std::string yc = "Center of Contaminant Source in Y direction, Yc: ";
    if (dim == 2) {
        const std::string sourceUnit = unitOf(form, RowField::twoDimSource);
        if (aquifer == "finite" || c == "Finite Line" || c == "Finite / Line") {
            add(labelled(yc, value(d.sourceYc), unitOf(form, RowField::sourceYc)));
            add(labelled("Width of Contaminant Source:                     ", value(d.sourceWidth), sourceUnit));
        } else if (c == "Continuous Point" || c == "Continuous / Point") {
            add(labelled("Center of Contaminant Source in X direction, Xc :", value(d.sourceXc),
                         unitOf(form, RowField::sourceXc)));
            add(labelled("Center of Contaminant Source in Y direction, Yc :", value(d.sourceYc),
                         unitOf(form, RowField::sourceYc)));
            add(labelled("Fluid Injection Rate per Unit Aquifer Thickness :", value(d.injectionRate), sourceUnit));
        } else if (c == "Gaussian") {
            add(labelled(yc, value(d.sourceYc), unitOf(form, RowField::sourceYc)));
            add(labelled("Standard Deviation of Gaussian Distribution:     ", value(d.sourceStdDev), sourceUnit));
        }
    } else if (dim == 3) {
        if (contains(c, "Finite")) {
            add(labelled("Width of Contaminant Source          :", value(d.sourceWidth),
                         unitOf(form, RowField::threeDimSourceA)));
            add(labelled("Height of the Contaminant Source     :", value(d.sourceHeight),
                         unitOf(form, RowField::threeDimSourceB)));
        } else {
            add(labelled("Center of Contaminant Source in X direction, Xc :", value(d.sourceXc),
                         unitOf(form, RowField::threeDimSourceA)));
            add(labelled("Fluid Injection Rate per Unit Aquifer Thickness :", value(d.injectionRate),
                         unitOf(form, RowField::threeDimSourceB)));
        }
    }

    add(blank());
    add(text("Field and Chemical Properties:"));
    add(property("  Ground Water Darcy Velocity: ", value(d.velocity), unitOf(form, RowField::velocity)));
    if (dim == 1) add(property("  Aquifer Porosity: ", value(d.porosity), unitOf(form, RowField::porosity)));
    if (d.multiChemical)
        appendChemicalProperties(out, d);
    else
        add(property("  Contaminant HalfLife: ", value(d.halfLife), unitOf(form, RowField::halfLife)));
    add(property("  Longitudinal Dispersion Coefficient: ", value(d.dispersionX), unitOf(form, RowField::dispersionX)));
    if (dim >= 2)
        add(property("  Lateral Dispersion Coefficient: ", value(d.dispersionY), unitOf(form, RowField::dispersionY)));
    if (dim >= 3)
        add(property("  Vertical Dispersion Coefficient: ", value(d.dispersionZ), unitOf(form, RowField::dispersionZ)));
    if (dim >= 2) {
        add(property("  Aquifer Porosity: ", value(d.porosity), unitOf(form, RowField::porosity)));
        add(property("  Net Recharge: ", value(d.netRecharge), unitOf(form, RowField::netRecharge)));
        add(property("  Effective Aquifer Thickness: ", value(d.aquiferThickness),
                     unitOf(form, RowField::aquiferThickness)));
    }
    add({{0, "  Retardation Coefficient : "}, {50, value(d.retardation)}});
    if (d.multiChemical) appendChemicalResults(out, d);
    return out;
}

// ---------------------------------------------------------------- the print command

void InputFormModel::printReport() {
    if (!holdDataSet()) return;
    ui_.setBusy(true);
    try {
        printLines(printedReportLines(*this));
    } catch (const RuntimeError& e) {
        ui_.setBusy(false);
        handleError(e, "printReport", "", ui_);
    }
    ui_.setBusy(false);
}

}  // namespace bm
