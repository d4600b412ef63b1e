#include "saturated/input_validation.h"

#include "model/number_text.h"
#include "model/ranges.h"
#include "montecarlo/monte_marker.h"
#include "montecarlo/pass/term_checks.h"
#include "model/model_kinds.h"
#include "shell/base/checked_math.h"
#include "shell/base/error_handler.h"
#include "shell/base/runtime_error.h"
#include "shell/base/user_interface.h"

namespace bm {

std::string rangeFormatTextF(int dimension) {
    if (dimension == 1) return "    Minimum:Maximum:Interval, Minimum:Maximum:Interval:Constant  (e.g. 0:100:1:50).";
    return "     Minimum:Maximum:Interval, Minimum:Maximum:Interval:Constant (e.g. 0:100:1).";
}

std::string rangeFormatTextG(int dimension) {
    if (dimension == 2) return "  Minimum:Maximum:Interval:Constant, Minimum:Maximum:Interval.";
    return "    Minimum:Maximum:Interval, Minimum:Maximum:Interval:Constant.";
}

namespace {

constexpr const char* kBreaks = "\r\r";
constexpr const char* kGiveProper = "Please give a proper input value.";

std::string numberText(double value) { return generalText(value); }

// One validation of a sheet: the rules of each dimension in their order.
class Validation {
public:
    Validation(InputSheet& sheet, DataSet& data, UserInterface& ui, InputPlace& failure)
        : s_(sheet), d_(sheet.dimension), ui_(ui), data_(data), failure_(failure) {}

    bool run() {
        switch (saturatedDimension(s_.modelType)) {
        case 1: return oneDimension();
        case 2: return twoDimensions();
        case 3: return threeDimensions();
        default: return false;  // a screen without a layout has nothing to calculate
        }
    }

private:
    // ---- access
    FormRow& row(int r) { return s_.row(r); }
    const std::string& text(int r) { return row(r).text; }
    std::string cap(int r) { return row(r).caption; }
    std::string val(int r) { return formatNumber(text(r)); }
    bool blank(int r) { return trim(text(r)).empty(); }
    bool monte(int r) { return holdsMonteMarker(text(r)); }
    double value(int r) { return textValue(text(r)); }

    InputPlace at(int r) {
        InputPlace p;
        p.tab = row(r).tab;
        p.row = r;
        return p;
    }
    InputPlace atTerm(int i, int column) {
        InputPlace p;
        p.tab = s_.grid.tab;
        p.grid = true;
        p.gridRow = i - 1;
        p.gridColumn = column;
        p.editMode = true;
        return p;
    }

    bool fail(const char* title, const std::string& message, const InputPlace& place) {
        ui_.message(MessageIcon::Exclamation, MessageButtons::Ok, title, message);
        failure_ = place;
        return false;
    }

    // ---- message patterns
    static std::string m1(const std::string& cap) {
        return "No input value has been given for " + cap + "." + kBreaks + kGiveProper;
    }
    static std::string m2() {
        return std::string("Retardation Coefficient (R) must be larger than or equal to one.") + kBreaks + kGiveProper;
    }
    static std::string m3(const std::string& cap, const std::string& val) {
        return "The input data give for " + cap + " = " + val + " is not correct." + kBreaks + kGiveProper;
    }
    std::string m4(const std::string& cap, const std::string& val) const {
        return "The input data give for " + cap + " = " + val + " is not in the proper format." + kBreaks +
               "Please use the two format: \r" + rangeFormatTextF(d_);
    }
    static std::string m5(const std::string& cap, const std::string& val) {
        return "The input data give for " + cap + " = " + val + " is not in the proper format." + kBreaks +
               "Please use the format: \r     Minimum:Maximum:Interval (e.g. 0:100:1).";
    }
    std::string m6(const std::string& cap, const std::string& val) const {
        return "The input data give for " + cap + " = " + val + " is not in the proper format." + kBreaks +
               "Please use the following two formats: \r" + rangeFormatTextG(d_);
    }
    static std::string m7() { return std::string("Time Range (t) should start zero.") + kBreaks + "Please set Tmin as zero!"; }
    static std::string m14(const std::string& cap, double minimum, double maximum) {
        return "Input constant value given for " + cap + " must be between  " + numberText(minimum) + " and " +
               numberText(maximum) + "." + kBreaks + kGiveProper;
    }
    static std::string m15(const std::string& cap, double minimum, double maximum) {
        return "Input value given for " + cap + " must be between  " + numberText(minimum) + " and " +
               numberText(maximum) + "." + kBreaks + kGiveProper;
    }
    static std::string m16(const std::string& cap) {
        return "Zero input value has been given for " + cap + "." + kBreaks + kGiveProper;
    }
    static std::string m17(const std::string& cap) {
        return "Input value given for " + cap + " must be equal to or greater than zero. & Chr(13) & Chr(13)" +
               kGiveProper;
    }
    static std::string m18(const std::string& cap) {
        return "Input value given for " + cap + " must be greater than zero. & Chr(13) & Chr(13)" + kGiveProper;
    }

    // ---- shared rules
    bool emptyRows(int from, int to) {
        for (int r = from; r <= to; ++r)
            if (blank(r) && row(r).enabled) return fail(kNoInputTitle, m1(cap(r)), at(r));
        return true;
    }

    // The retardation row: present, at least one, numeric. A Monte Carlo
    // marker escapes the test of at least one but not the numeric test, so
    // retardation cannot be left to a simulation. In two dimensions the value
    // of the message is read from the one-dimensional list's row of the same
    // number, which that list does not have: the run-time error is what the
    // user gets to see.
    bool retardation(int r, bool valueFromOneDimensionalList) {
        if (blank(r)) return fail(kNoInputTitle, m1(cap(r)), at(r));
        if (!monte(r) && value(r) < 1) return fail(kImproperInputTitle, m2(), at(r));
        if (!isNumeric(text(r))) {
            const std::string shown = valueFromOneDimensionalList ? formatNumber(rowOf(oneDimensionalRows_, r).text) : val(r);
            return fail(kImproperInputTitle, m3(cap(r), shown), at(r));
        }
        return true;
    }

    bool rangeForm(int r) {
        if (!isRangeForm(text(r))) return fail(kInvalidFormatTitle, m4(cap(r), val(r)), at(r));
        return true;
    }

    ParsedRange parse(int r) { return parseRange(text(r)); }

    // Overwrites the row of the selected point with the Constant of its range.
    void overwrite(int pointRow, double constant) { row(pointRow).text = formatNumber(constant); }

    bool pointInRange(int pointRow, const ParsedRange& range) {
        const double v = value(pointRow);
        if (v < range.minimum || v > range.maximum)
            return fail(kImproperInputTitle, m15(cap(pointRow), range.minimum, range.maximum), at(pointRow));
        return true;
    }

    bool terms(int superpositionRow, double tMin, double tMax) {
        TermFailure failure;
        if (termsAccepted(s_.grid, toInt16(value(superpositionRow)), tMin, tMax, ConcentrationRule::EveryTermPositive,
                          MessageIcon::Exclamation, ui_, failure))
            return true;
        failure_ = atTerm(failure.row + 1, failure.column);
        return false;
    }

    bool notZero(int r) {
        if (value(r) == 0 && row(r).enabled && !monte(r)) return fail(kImproperInputTitle, m16(cap(r)), at(r));
        return true;
    }

    // ---- one dimension
    bool oneDimension() {
        if (!emptyRows(0, 5)) return false;
        if (!retardation(10, false)) return false;
        if (!rangeForm(3) || !rangeForm(4)) return false;
        const ParsedRange x = parse(3);
        data_.numXTerms = x.terms;
        const ParsedRange t = parse(4);
        data_.numTTerms = t.terms;
        if (x.terms < 1 || t.terms < 1) return fail(kInvalidFormatTitle, m6(cap(3), val(3)), at(3));
        if (t.minimum != 0) return fail(kInvalidFormatTitle, m7(), at(4));
        overwrite(6, x.constant);
        overwrite(7, t.constant);
        if (!terms(5, t.minimum, t.maximum)) return false;
        if (value(6) < x.minimum || value(6) > x.maximum)
            return fail(kImproperInputTitle, m14(cap(3), x.minimum, x.maximum), at(3));
        if (value(7) < t.minimum || value(7) > t.maximum)
            return fail(kImproperInputTitle, m14(cap(4), t.minimum, t.maximum), at(4));
        return notZero(1) && notZero(2) && notZero(8);
    }

    // ---- two dimensions
    bool twoDimensions() {
        if (!emptyRows(0, 14) || !emptyRows(15, 16)) return false;
        if (!retardation(18, true)) return false;
        if (!rangeForm(0) || !rangeForm(1)) return false;
        if (!isRangeForm(text(3))) return fail(kInvalidFormatTitle, m5(cap(3), val(3)), at(3));
        const ParsedRange x = parse(0);
        data_.numXTerms = x.terms;
        const ParsedRange y = parse(1);
        data_.numYTerms = y.terms;
        const ParsedRange t = parse(3);
        data_.numTTerms = t.terms;
        if (x.terms < 1 || y.terms < 1 || t.terms < 1) return fail(kInvalidFormatTitle, m6(cap(0), val(0)), at(0));
        if (t.minimum != 0) return fail(kInvalidFormatTitle, m7(), at(3));
        overwrite(13, x.constant);
        overwrite(12, y.constant);
        overwrite(14, t.constant);
        if (!pointInRange(13, x) || !pointInRange(12, y) || !pointInRange(14, t)) return false;
        if (!terms(7, t.minimum, t.maximum)) return false;
        if (!monte(15) && value(15) < 0) return fail(kImproperInputTitle, m17(cap(15)), at(15));
        if (!monte(16) && value(16) <= 0) return fail(kImproperInputTitle, m18(cap(16)), at(16));
        return true;
    }

    // ---- three dimensions
    bool threeDimensions() {
        if (!emptyRows(0, 18) || !emptyRows(19, 20)) return false;
        if (!retardation(22, false)) return false;
        for (int r = 0; r <= 3; ++r)
            if (!rangeForm(r)) return false;
        const ParsedRange x = parse(0);
        data_.numXTerms = x.terms;
        const ParsedRange y = parse(1);
        data_.numYTerms = y.terms;
        const ParsedRange z = parse(2);
        data_.numZTerms = z.terms;
        const ParsedRange t = parse(3);
        data_.numTTerms = t.terms;
        if (x.terms < 1 || y.terms < 1 || z.terms < 1 || t.terms < 1)
            return fail(kInvalidFormatTitle, m6(cap(0), val(0)), at(0));
        if (t.minimum != 0) return fail(kInvalidFormatTitle, m7(), at(3));
        overwrite(16, x.constant);
        overwrite(17, y.constant);
        overwrite(18, z.constant);
        overwrite(15, t.constant);
        if (!pointInRange(16, x) || !pointInRange(17, y) || !pointInRange(18, z) || !pointInRange(15, t)) return false;
        if (!terms(9, t.minimum, t.maximum)) return false;
        if (!monte(19) && value(19) < 0) return fail(kImproperInputTitle, m17(cap(19)), at(19));
        if (!monte(20) && value(20) <= 0) return fail(kImproperInputTitle, m18(cap(20)), at(20));
        return true;
    }

    InputSheet& s_;
    int d_;
    UserInterface& ui_;
    DataSet& data_;
    InputPlace& failure_;
    // The one-dimensional layout's rows, which the two-dimensional retardation
    // message reads by mistake.
    const std::vector<FormRow> oneDimensionalRows_ = layoutRows(1);
};

}  // namespace

bool validateInputSheet(InputSheet& sheet, DataSet& data, UserInterface& ui, InputPlace& failure) {
    return Validation(sheet, data, ui, failure).run();
}

bool validateSaturatedInputs(DataSet& data, UserInterface& ui) {
    InputSheet sheet;
    try {
        if (!sheetOfDataSet(data, sheet)) {
            ui.message(MessageIcon::None, MessageButtons::Ok, "brenmoor", "Error in setDisplay()");
            return false;
        }
    } catch (const RuntimeError& e) {
        handleError(e, "Error in setDisplay()", "", ui);
        return false;
    }
    bool valid = false;
    try {
        InputPlace failure;
        valid = validateInputSheet(sheet, data, ui, failure);
    } catch (const RuntimeError& e) {
        ui.setBusy(false);
        handleError(e, "inputForm_validate", "", ui);
        valid = false;
    }
    ui.setBusy(false);
    // The rows of the selected point that validation rewrote go back to the DataSet.
    const DimensionRows& n = dimensionRows(sheet.dimension);
    data.mcAtX = sheet.row(n.mcX).text;
    data.mcAtT = sheet.row(n.mcT).text;
    if (n.mcY >= 0) data.mcAtY = sheet.row(n.mcY).text;
    if (n.mcZ >= 0) data.mcAtZ = sheet.row(n.mcZ).text;
    return valid;
}

}  // namespace bm
