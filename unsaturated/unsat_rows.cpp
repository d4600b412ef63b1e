#include "unsaturated/unsat_rows.h"

#include <array>
#include <cmath>

#include "model/number_text.h"
#include "model/ranges.h"
#include "model/units.h"
#include "montecarlo/monte_marker.h"
#include "montecarlo/pass/term_checks.h"
#include "shell/base/checked_math.h"
#include "unsaturated/unsat_parameters.h"
#include "unsaturated/unsat_radicand.h"
#include "unsaturated/unsat_variants.h"

namespace bm {

namespace {

constexpr const char* kBreaks = "\r\r";
constexpr const char* kGiveProper = "Please give a proper input value.";
constexpr const char* kCheckData = "Please check the input data.";
constexpr const char* kNoInputTitle = "No input data";
constexpr const char* kImproperTitle = "Improper input data";
constexpr const char* kFormatTitle = "Invalid input format";

struct RowSpec {
    const char* caption;
    UnitKind unit;
};

// Captions and unit kinds by row; bulk density, the distribution coefficient
// and the decay rate have units of their own (below).
const std::array<RowSpec, unsatrow::Count> kRows = {{
    {kPercolationRateCaption, UnitKind::Velocity},
    {kUnsatDispersionCaption, UnitKind::Diffusivity},
    {kUnsatHalfLifeCaption, UnitKind::Time},
    {kUnsatXRangeCaption, UnitKind::Length},
    {kUnsatTimeRangeCaption, UnitKind::Time},
    {kUnsatSuperpositionCaption, UnitKind::None},
    {kUnsatPointXCaption, UnitKind::Length},
    {kUnsatPointTCaption, UnitKind::Time},
    {kBulkDensityCaption, UnitKind::None},
    {kDistributionCoefficientCaption, UnitKind::None},
    {kUnsatPorosityCaption, UnitKind::None},
    {kSaturationCaption, UnitKind::None},
    {kSourceDecayCaption, UnitKind::None},
    {"", UnitKind::None},
    {kUnsatChemicalCountCaption, UnitKind::None},
}};

// The field a row shows; nullptr for the counts and the unused row.
template <class Data>
auto fieldOf(Data& d, int row) -> decltype(&d.xRange) {
    switch (row) {
    case unsatrow::Percolation: return &d.velocity;
    case unsatrow::Dispersion: return &d.dispersionX;
    case unsatrow::HalfLife: return &d.halfLife;
    case unsatrow::X: return &d.xRange;
    case unsatrow::Time: return &d.timeRange;
    case unsatrow::PointX: return &d.mcAtX;
    case unsatrow::PointT: return &d.mcAtT;
    case unsatrow::BulkDensity: return &d.bulkDensity;
    case unsatrow::Distribution: return &d.distributionCoefficient;
    case unsatrow::Porosity: return &d.porosity;
    case unsatrow::Saturation: return &d.saturation;
    case unsatrow::SourceDecay: return &d.sourceDecayRate;
    default: return nullptr;
    }
}

std::int16_t wholeCount(const std::string& text) {
    const double v = textValue(text);
    return v < 1 ? std::int16_t{1} : toInt16(v);
}

// A range of the unsaturated rows: a single number is the column from 0 to it,
// as the record is filled.
struct UnsatRange {
    double minimum = 0, maximum = 0, interval = 0;
    int terms = 1;
};

UnsatRange unsatRange(const std::string& text) {
    UnsatRange r;
    double constant = 0;
    r.terms = parseRange(text, r.minimum, r.maximum, r.interval, constant);
    assignRange(text, r.minimum, r.maximum, r.interval);
    return r;
}

class Validation {
public:
    Validation(const std::vector<UnsatRow>& rows, const UnsatChecks& checks, UserInterface& ui, UnsatFailure& failure)
        : rows_(rows), checks_(checks), ui_(ui), failure_(failure) {}

    bool run() {
        // 1. Every row in use has a value.
        for (int r = 0; r < unsatrow::Count; ++r)
            if (inUse(r) && trim(text(r)).empty()) return fail(r, kNoInputTitle, noInput(r));
        if (checks_.multiChemical && !chemicalCount()) return false;

        // 2. The ranges' form.
        for (int r : {unsatrow::X, unsatrow::Time})
            if (!isRangeForm(text(r)) && !isScalarRange(text(r)))
                return fail(r, kFormatTitle,
                            "The input data give for " + cap(r) + " = " + text(r) +
                                " is not in the proper format." + kBreaks + "Please use the two format: \r" +
                                "     Minimum:Maximum:Interval, Minimum:Maximum:Interval:Constant (e.g. 0:100:1).");

        // 3. The time range starts at zero and runs forward; the depths count at least one.
        const UnsatRange x = unsatRange(text(unsatrow::X));
        const UnsatRange t = unsatRange(text(unsatrow::Time));
        if (t.minimum != 0)
            return fail(unsatrow::Time, kFormatTitle,
                        std::string("Time Range (t) should start zero.") + kBreaks + "Please set Tmin as zero!");
        if (x.terms < 1)
            return fail(unsatrow::X, kFormatTitle,
                        std::string("The input data given for z coordinates are invalid.") + kBreaks + kCheckData);
        if (t.maximum < t.minimum)
            return fail(unsatrow::Time, kImproperTitle,
                        std::string("Maximum time is less than minimum time value.") + kBreaks + kCheckData);
        if (t.interval < 0)
            return fail(unsatrow::Time, kImproperTitle, "Time interval is less than zero. Please check the input data.");

        if (checks_.multiChemical) {
            // The chemicals' tables take the place of the terms.
            if (checks_.tablesAccepted && !checks_.tablesAccepted(ui_)) return false;
        } else {
            // 4, 5. The superposition index and the terms.
            if (textValue(text(unsatrow::Superposition)) < 1)
                return fail(unsatrow::Superposition, kImproperTitle,
                            "The value of Superposition Index must be greater than or equal to 1.");
            if (checks_.terms) {
                TermFailure at;
                if (!termsAccepted(*checks_.terms, toInt16(textValue(text(unsatrow::Superposition))), t.minimum,
                                   t.maximum, ConcentrationRule::FirstTermPositive, MessageIcon::Critical, ui_, at)) {
                    failure_.grid = true;
                    failure_.gridRow = at.row;
                    failure_.gridColumn = at.column;
                    return false;
                }
            }
        }

        // 6. The point of a simulation inside the ranges.
        if (!pointInside(unsatrow::PointX, x) || !pointInside(unsatrow::PointT, t)) return false;

        // 7. The constants; a value under Monte Carlo control is the samples' business.
        if (below(unsatrow::Percolation, 0.0))
            return fail(unsatrow::Percolation, kImproperTitle, "Less than zero input value has been given for " +
                                                                   cap(unsatrow::Percolation) + "." + kBreaks + kGiveProper);
        for (int r : {unsatrow::Dispersion, unsatrow::HalfLife, unsatrow::Porosity})
            if (inUse(r) && !monte(r) && value(r) == 0)
                return fail(r, kImproperTitle, "Zero input value has been given for " + cap(r) + "." + kBreaks + kGiveProper);
        if (!monte(unsatrow::Porosity) && value(unsatrow::Porosity) > 1)
            return fail(unsatrow::Porosity, kImproperTitle,
                        "Larger than one input value has been given for " + cap(unsatrow::Porosity) + "." + kBreaks +
                            kGiveProper);
        const int sw = unsatrow::Saturation;
        if (!monte(sw) && value(sw) <= 0)
            return fail(sw, kImproperTitle,
                        "Zero or less than zero input value has been given for " + cap(sw) + "." + kBreaks + kGiveProper);
        if (!monte(sw) && value(sw) > 1)
            return fail(sw, kImproperTitle,
                        "Larger  than one input value has been given for " + cap(sw) + "." + kBreaks + kGiveProper);
        // Saturation is a share of the pore space, yet the screen holds it to the porosity.
        if (!monte(sw) && !monte(unsatrow::Porosity) && value(sw) > value(unsatrow::Porosity))
            return fail(sw, kImproperTitle,
                        cap(sw) + " is larger than " + cap(unsatrow::Porosity) + "." + kBreaks + kGiveProper);

        // 8. The square root of the solution, for a decaying source.
        if (unsatConstantSource(checks_.contaminantType)) return true;
        for (int r : {unsatrow::Percolation, unsatrow::Dispersion, unsatrow::HalfLife, unsatrow::BulkDensity,
                      unsatrow::Distribution, unsatrow::Porosity, unsatrow::Saturation, unsatrow::SourceDecay})
            if (inUse(r) && monte(r)) return true;
        if (checks_.multiChemical)
            return !chemicalRadicandNegative(value(unsatrow::Percolation), value(unsatrow::Dispersion),
                                             value(unsatrow::BulkDensity), value(unsatrow::Distribution),
                                             value(unsatrow::Porosity), value(sw), value(unsatrow::SourceDecay),
                                             checks_.decayRates, ui_);
        return !unsatRadicandNegative(value(unsatrow::Percolation), value(unsatrow::Dispersion),
                                      value(unsatrow::HalfLife), value(unsatrow::BulkDensity),
                                      value(unsatrow::Distribution), value(unsatrow::Porosity), value(sw),
                                      value(unsatrow::SourceDecay), ui_);
    }

private:
    const UnsatRow& row(int r) const { return rows_.at(static_cast<std::size_t>(r)); }
    const std::string& text(int r) const { return row(r).text; }
    const std::string& cap(int r) const { return row(r).caption; }
    bool inUse(int r) const { return row(r).inUse; }
    bool monte(int r) const { return holdsMonteMarker(text(r)); }
    double value(int r) const { return textValue(text(r)); }
    bool below(int r, double least) const { return !monte(r) && value(r) < least; }

    bool fail(int r, const char* title, const std::string& message) {
        ui_.message(MessageIcon::Critical, MessageButtons::Ok, title, message);
        failure_.row = r;
        return false;
    }
    std::string noInput(int r) const {
        return "No input value has been given for " + cap(r) + "." + kBreaks + kGiveProper;
    }

    bool chemicalCount() {
        const int r = unsatrow::Chemicals;
        const std::string n = trim(text(r));
        if (!isNumeric(n) || std::floor(numericValue(n)) != numericValue(n))
            return fail(r, kImproperTitle, "The input value for " + cap(r) + "is not a integer." + kBreaks + kGiveProper);
        if (numericValue(n) < 1)
            return fail(r, kImproperTitle, "The input value for " + cap(r) + "is less than one." + kBreaks + kGiveProper);
        return true;
    }

    bool pointInside(int r, const UnsatRange& range) {
        if (!inUse(r)) return true;
        const double v = value(r);
        if (v >= range.minimum && v <= range.maximum) return true;
        return fail(r, kImproperTitle,
                    "Input value given for " + cap(r) + " must be between  " + generalText(range.minimum) + " and " +
                        generalText(range.maximum) + "." + kBreaks + kGiveProper);
    }

    const std::vector<UnsatRow>& rows_;
    const UnsatChecks& checks_;
    UserInterface& ui_;
    UnsatFailure& failure_;
};

std::vector<UnsatRow> rowsOfDataSet(const DataSet& data) {
    return unsatRowsOf(data, data.multiChemical, unitWordOf(data, UnitMenu::Length), unitWordOf(data, UnitMenu::Time));
}

}  // namespace

bool unsatConstantSource(const std::string& contaminantType) { return contaminantType == kUnsatDirichlet; }

std::vector<UnsatRow> unsatRowsOf(const DataSet& data, bool multiChemical, const std::string& lengthWord,
                                  const std::string& timeWord) {
    std::vector<UnsatRow> rows(unsatrow::Count);
    for (int i = 0; i < unsatrow::Count; ++i) {
        UnsatRow& r = rows[static_cast<std::size_t>(i)];
        r.caption = kRows[static_cast<std::size_t>(i)].caption;
        r.unitCaption = unitLabel(kRows[static_cast<std::size_t>(i)].unit, lengthWord, timeWord);
        if (const std::string* field = fieldOf(data, i)) r.text = *field;
    }
    rows[unsatrow::BulkDensity].unitCaption = "(g/cm\u00b3)";
    rows[unsatrow::Distribution].unitCaption = "(cm\u00b3/g)";
    rows[unsatrow::SourceDecay].unitCaption = "(1/" + timeWord + ")";
    rows[unsatrow::Superposition].text = std::to_string(data.superpositionIndex < 1 ? 1 : data.superpositionIndex);
    rows[unsatrow::Chemicals].text = std::to_string(data.numChemicals < 1 ? 1 : data.numChemicals);

    const bool constant = unsatConstantSource(data.contaminantType);
    rows[13].inUse = false;
    rows[unsatrow::SourceDecay].inUse = !constant;
    rows[unsatrow::Superposition].readOnly = !constant;
    if (multiChemical) {
        rows[unsatrow::HalfLife].inUse = false;  // each chemical has its rate
        rows[unsatrow::Superposition].inUse = false;
    } else {
        rows[unsatrow::Chemicals].inUse = false;
    }
    return rows;
}

void storeUnsatRows(const std::vector<UnsatRow>& rows, DataSet& data) {
    for (int i = 0; i < unsatrow::Count && i < static_cast<int>(rows.size()); ++i) {
        const UnsatRow& r = rows[static_cast<std::size_t>(i)];
        if (!r.inUse) continue;
        if (std::string* field = fieldOf(data, i)) *field = r.text;
    }
    if (rows.size() > unsatrow::Chemicals) {
        if (rows[unsatrow::Superposition].inUse) data.superpositionIndex = wholeCount(rows[unsatrow::Superposition].text);
        if (rows[unsatrow::Chemicals].inUse) data.numChemicals = wholeCount(rows[unsatrow::Chemicals].text);
    }
}

bool validateUnsatRows(const std::vector<UnsatRow>& rows, const UnsatChecks& checks, UserInterface& ui,
                       UnsatFailure& failure) {
    return Validation(rows, checks, ui, failure).run();
}

bool validateUnsaturatedInputs(DataSet& data, UserInterface& ui) {
    TermGrid grid;
    termsToGrid(data, grid);
    grid.timeHeading = timeColumnHeading(unitWordOf(data, UnitMenu::Time));
    grid.concentrationHeading = concentrationColumnHeading(data.modelType, data.aquiferType, data.contaminantType,
                                                           unitWordOf(data, UnitMenu::Concentration));
    UnsatChecks checks;
    checks.contaminantType = data.contaminantType;
    checks.terms = &grid;
    UnsatFailure failure;
    return validateUnsatRows(rowsOfDataSet(data), checks, ui, failure);
}

bool validateMultiUnsaturatedInputs(DataSet& data, const std::function<bool(UserInterface&)>& tablesAccepted,
                                    UserInterface& ui) {
    UnsatChecks checks;
    checks.contaminantType = data.contaminantType;
    checks.multiChemical = true;
    checks.tablesAccepted = tablesAccepted;
    for (int i = 1; i <= data.numChemicals && i <= data.decayRate.ub(); ++i) checks.decayRates.push_back(data.decayRate(i));
    UnsatFailure failure;
    return validateUnsatRows(rowsOfDataSet(data), checks, ui, failure);
}

}  // namespace bm
