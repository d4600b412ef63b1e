#include "species/chain/chain_validation.h"

#include "model/number_text.h"
#include "model/ranges.h"
#include "montecarlo/monte_marker.h"

namespace bm {

namespace {

constexpr const char* kBreaks = "\r\r";
constexpr const char* kNoInputTitle = "No input data";
constexpr const char* kImproperTitle = "Improper input data";
constexpr const char* kFormatTitle = "Invalid input format";

bool refuse(UserInterface& ui, const char* title, const std::string& first, const std::string& second) {
    ui.message(MessageIcon::Critical, MessageButtons::Ok, title, first + kBreaks + second);
    return false;
}

bool sourcesAccepted(const DataSet& d, UserInterface& ui) {
    double tMin = 0, tMax = 0, interval = 0, constant = 0;
    parseRange(d.timeRange, tMin, tMax, interval, constant);
    for (int i = 1; i <= d.numChemicals; ++i) {
        const std::string& time = d.suppositionTime(i);
        if (!holdsMonteMarker(time)) {
            if (!isNumeric(time))
                return refuse(ui, kFormatTitle, "The times must be numeric values.", "Please give a proper value for it.");
            const double t = numericValue(time);
            if (t < 0)
                return refuse(ui, kImproperTitle, "The values of time must be greater than zero.",
                              "Please give a proper values for time.");
            if (t < tMin || t > tMax)
                return refuse(ui, kImproperTitle,
                              "Input value given for the time must be between  " + generalText(tMin) + " and " +
                                  generalText(tMax),
                              "Please give a proper input value for it.");
        }
        const std::string& concentration = d.suppositionConcentration(i);
        if (holdsMonteMarker(concentration)) continue;
        if (!isNumeric(concentration))
            return refuse(ui, kFormatTitle, "The concentration must be numeric values.",
                          "Please give a proper value for it.");
        if (numericValue(concentration) < 0)
            return refuse(ui, kImproperTitle, "The value of concetration must be greater than zero.",
                          "Please give a proper values for it.");
    }
    return true;
}

bool chemicalsAccepted(const DataSet& d, UserInterface& ui) {
    for (int i = 1; i <= d.numChemicals; ++i) {
        if (trim(d.chemicalName(i)).empty())
            return refuse(ui, kNoInputTitle, "Not all values have been given for chemical names.",
                          "Please give proper chemical names.");
        const std::string& rate = d.decayRate(i);
        if (!holdsMonteMarker(rate)) {
            if (!isNumeric(rate))
                return refuse(ui, kFormatTitle, "The destruction rates must be numeric values.",
                              "Please give a proper value for it.");
            if (numericValue(rate) <= 0)
                return refuse(ui, kImproperTitle, "The value of destruction rates must be greater than zero.",
                              "Please give a proper values for destruction rates.");
        }
        const std::string& yield = d.yieldFactor(i);
        if (!holdsMonteMarker(yield)) {
            if (!isNumeric(yield))
                return refuse(ui, kFormatTitle, "The yield facotrs must be numeric values.",
                              "Please give a proper value for it.");
            if (numericValue(yield) < 0)
                return refuse(ui, kImproperTitle, "The value of yield facotrs must be greater than zero.",
                              "Please give a proper value for it.");
        }
    }
    for (int i = 1; i <= d.numChemicals; ++i)
        for (int j = i + 1; j <= d.numChemicals; ++j)
            if (sameDecayRate(d.decayRate(i), d.decayRate(j)))
                return refuse(ui, kImproperTitle,
                              "The decay rate of chemical " + d.chemicalName(i) + " is the same as that of chemical " +
                                  d.chemicalName(j),
                              "This will result in incorrect solution. Please give the proper values\rfor the decay "
                              "rates.");
    return true;
}

}  // namespace

bool sameDecayRate(const std::string& first, const std::string& second) {
    // A single carries seven digits: rates alike in those are alike.
    const auto singleText = [](const std::string& rate) { return generalText(static_cast<float>(markerConstant(rate))); };
    return singleText(first) == singleText(second);
}

bool chainTablesAccepted(const DataSet& data, UserInterface& ui) {
    return sourcesAccepted(data, ui) && chemicalsAccepted(data, ui);
}

}  // namespace bm
