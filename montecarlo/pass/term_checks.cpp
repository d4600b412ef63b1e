#include "montecarlo/pass/term_checks.h"

#include "model/number_text.h"
#include "montecarlo/monte_marker.h"

namespace bm {

namespace {

constexpr const char* kBreaks = "\r\r";
constexpr const char* kNoInputTitle = "No input data";
constexpr const char* kImproperTitle = "Improper input data";

std::string inRow(int i) { return "Please give a proper value in row number " + std::to_string(i) + "."; }

std::string missing(const std::string& column, int i) {
    return "Not all values have been given for " + column + "." + kBreaks + inRow(i);
}

}  // namespace

bool termsAccepted(const TermGrid& g, int count, double tMin, double tMax, ConcentrationRule rule, MessageIcon icon,
                   UserInterface& ui, TermFailure& failure) {
    const auto fail = [&](const char* title, const std::string& text, int i, int column) {
        ui.message(icon, MessageButtons::Ok, title, text);
        failure.row = i - 1;
        failure.column = column;
        return false;
    };
    const double firstTime = textValue(g.cell(0, 0));
    for (int i = 1; i <= count; ++i) {
        const std::string& time = g.cell(i - 1, 0);
        const std::string& concentration = g.cell(i - 1, 1);
        const double t = textValue(time);
        if (trim(time).empty()) return fail(kNoInputTitle, missing(g.timeHeading, i), i, 0);
        if (t < firstTime)
            return fail(kImproperTitle,
                        "All time values must be greater than " + generalText(firstTime) +
                            ", which is the  initial time value." + kBreaks + inRow(i),
                        i, 0);
        if (t < tMin || t > tMax)
            return fail(kImproperTitle,
                        "Input value given for " + g.timeHeading + " must be between  " + generalText(tMin) + " and " +
                            generalText(tMax) + "." + kBreaks + "Please give a proper input value in row number " +
                            std::to_string(i) + ".",
                        i, 0);
        const bool marker = holdsMonteMarker(concentration);
        const bool mustBePositive = i == 1 || rule == ConcentrationRule::EveryTermPositive;
        if (mustBePositive && !marker && textValue(concentration) <= 0)
            return fail(kImproperTitle,
                        std::string("The value of initial concentration must be greater than zero.") + kBreaks +
                            "Please give a proper value in first row.",
                        i, 1);
        if (trim(concentration).empty()) return fail(kNoInputTitle, missing(g.concentrationHeading, i), i, 1);
        if (!marker && !isNumeric(concentration)) {
            ui.setBusy(false);
            return fail(kImproperTitle, g.concentrationHeading + " given is not a numeric value." + kBreaks + inRow(i),
                        i, 1);
        }
        if (i == 1 && t != tMin)
            return fail(kImproperTitle,
                        "The first row indicates the initial conditions. The time choosen in there must be the same "
                        "as first element in the Time Range (" +
                            generalText(tMin) + ")." + kBreaks + "Please give a proper value.",
                        i, 0);
    }
    return true;
}

}  // namespace bm
