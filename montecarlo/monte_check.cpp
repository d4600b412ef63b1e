#include "montecarlo/monte_check.h"

#include <algorithm>

#include "model/number_text.h"
#include "shell/base/user_interface.h"

namespace bm {

const char* const kDistributionNames[7] = {"normal",      "lognormal", "uniform",   "exponential",
                                           "gumbel",      "triangle",  "loguniform"};

namespace {

const char* const kImproper = "Improper Input Data";
const char* const kTwoBreaks = "\r\r";

void refuse(UserInterface& ui, const std::string& text) {
    ui.message(MessageIcon::Critical, MessageButtons::Ok, kImproper, text);
}

bool blank(const std::string& text) { return trim(text).empty(); }

// A number as the messages show it.
std::string shown(double value) { return generalText(value); }

// The rules of one row in their fixed order; false after the first failure.
bool checkRow(const MonteInputRow& row, UserInterface& ui) {
    const std::string name = trim(row.variant);
    auto fail = [&](const char* kind, const char* field) {
        refuse(ui, improperValueText(kind, field, name));
        return false;
    };
    if (blank(row.variance)) return fail("Nil", "variance");
    if (textValue(row.variance) == 0) return fail("Zero", "variance");
    if (textValue(row.variance) < 0) return fail("Negative", "variance");
    if (blank(row.mean)) return fail("Nil", "mean");
    if (textValue(row.mean) == 0) return fail("Zero", "mean");
    if (blank(row.minimum)) return fail("Nil", "minimum");
    if (textValue(row.minimum) == 0) return fail("Zero", "minimum");
    if (blank(row.maximum)) return fail("Nil", "maximum");
    if (textValue(row.maximum) == 0) return fail("Zero", "maximum");
    const double mean = textValue(row.mean);
    if (mean < textValue(row.minimum) || mean > textValue(row.maximum)) {
        refuse(ui, name + ": Invalid upper and lower bounds." + kTwoBreaks +
                       "The maximum value must be greater than the mean and the minimum must be smaller than the "
                       "mean value of the variant. Please give the appropriate values. ");
        return false;
    }
    if (blank(row.terms)) return fail("Nil", "number of terms");
    if (textValue(row.terms) == 0) return fail("Zero", "number of terms");
    if (textValue(row.terms) < 0) return fail("Negative", "number of terms");
    if (distributionCode(row.distribution) == 0) {
        refuse(ui, "No distribution type has been selected for " + name + ". " + kTwoBreaks +
                       "Please select a valid distribution type for this simulation. ");
        return false;
    }
    return true;
}

// Position in variantLB1 of the first name holding `part` (lower-cased), or -1.
int findVariant(const MonteVariantList& variants, const std::string& part) {
    for (std::size_t i = 0; i < variants.variantLB1.size(); ++i)
        if (contains(toLower(variants.variantLB1[i]), part)) return static_cast<int>(i);
    return -1;
}

// Soil water content must stay below soil porosity, for variants whose names hold those words.
bool checkSoilPair(const DataSet& data, const MonteVariantList& variants, std::int16_t chemical, UserInterface& ui) {
    const int porosityAt = findVariant(variants, "soil porosity");
    const int waterAt = findVariant(variants, "soil water content");
    if (porosityAt < 0 || waterAt < 0) return true;
    auto present = [&](int at) {
        return static_cast<std::size_t>(at) < variants.meanLB.size() ? textValue(variants.meanLB[static_cast<std::size_t>(at)]) : 0.0;
    };
    const std::string porosityName = trim(variants.variantLB1[static_cast<std::size_t>(porosityAt)]);
    const std::string waterName = trim(variants.variantLB1[static_cast<std::size_t>(waterAt)]);
    const MonteInputRow* porosityRow = nullptr;
    const MonteInputRow* waterRow = nullptr;
    const int rows = monteRowsInTable(data, chemical);
    for (int r = 1; r <= rows; ++r) {
        const MonteInputRow& row = data.InputTGData(r, chemical);
        if (!row.inUse) continue;
        const std::string name = trim(row.variant);
        if (!porosityRow && name == porosityName) porosityRow = &row;
        if (!waterRow && name == waterName) waterRow = &row;
    }
    if (!porosityRow && !waterRow) return true;
    if (porosityRow && !waterRow) {
        const double p = textValue(porosityRow->minimum), w = present(waterAt);
        if (w >= p) {
            refuse(ui, "The minimum value of soil porosity " + shown(p) + " is less than the soil water content " +
                           shown(w) + "!" + kTwoBreaks + "The minimum value of soil porosity must be greater than soil "
                           "water content " + shown(w) + "." + "\r" +
                           "Please give the appropriate values for soil porosity.");
            return false;
        }
        return true;
    }
    if (waterRow && !porosityRow) {
        const double p = present(porosityAt), w = textValue(waterRow->maximum);
        if (w >= p) {
            refuse(ui, "The maximum value of soil water content " + shown(w) +
                           " is greater than or equal to the soil porosity " + shown(p) + "!" + kTwoBreaks +
                           "The maximum value of soil water content must be less than soil porosity " + shown(p) +
                           "." + "\r" + "Please give the appropriate values for soil water content.");
            return false;
        }
        return true;
    }
    if (textValue(waterRow->maximum) >= textValue(porosityRow->minimum)) {
        refuse(ui, std::string("Soil water content is out of the interval of soil porosity!") + kTwoBreaks +
                       "The maximum value of soil water content must be less than the minimum value of soil porosity." +
                       "\r" + "Please give the appropriate values for soil porosity and soil water content.");
        return false;
    }
    return true;
}

bool checkWindAngle(const DataSet& data, std::int16_t chemical, UserInterface& ui) {
    const int rows = monteRowsInTable(data, chemical);
    for (int r = 1; r <= rows; ++r) {
        const MonteInputRow& row = data.InputTGData(r, chemical);
        if (!row.inUse || !contains(toLower(row.variant), "line source - wind vector angle")) continue;
        const double lo = textValue(row.minimum), hi = textValue(row.maximum);
        auto inside = [](double v) { return v >= 45 && v <= 135; };
        if (!inside(lo) || !inside(hi)) {
            refuse(ui, std::string("The valid range for Line Source - Wind Vector Angle is from 45\u00B0 to 135\u00B0.") +
                           kTwoBreaks + "Please change the value to accomodate this criteria.");
            return false;
        }
    }
    return true;
}

}  // namespace

std::int16_t distributionCode(const std::string& text) {
    const std::string name = toLower(trim(text));
    for (int i = 0; i < 7; ++i)
        if (name == kDistributionNames[i]) return static_cast<std::int16_t>(i + 1);
    return 0;
}

std::string improperValueText(const std::string& kind, const std::string& field, const std::string& name) {
    return kind + " input value." + kTwoBreaks + " The " + field + " value of " + name + " has been given as " +
           toLower(kind) + ".";
}

int monteRowsInTable(const DataSet& data, std::int16_t chemical) {
    if (chemical < 0 || chemical > data.InputTGData.ub(1)) return 0;
    return std::max(0, std::min<int>(data.monteRowCount, data.InputTGData.ub(0)));
}

bool checkBeforeGeneration(const DataSet& data, const MonteVariantList& variants, std::int16_t chemical,
                           UserInterface& ui) {
    const int rows = monteRowsInTable(data, chemical);
    for (int r = 1; r <= rows; ++r) {
        const MonteInputRow& row = data.InputTGData(r, chemical);
        if (row.inUse && !checkRow(row, ui)) return false;
    }
    if (!checkSoilPair(data, variants, chemical, ui)) return false;
    if (!checkWindAngle(data, chemical, ui)) return false;

    bool anyVariant = false;
    for (int r = 1; r <= rows; ++r)
        if (!trim(data.InputTGData(r, chemical).variant).empty()) anyVariant = true;
    if (!anyVariant)
        ui.message(MessageIcon::Information, MessageButtons::Ok, "Error Information",
                   "No variable selected for Monte Carlo Analysis!");
    return true;
}

}  // namespace bm
