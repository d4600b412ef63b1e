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

class ChainChecks {
public:
    ChainChecks(const std::vector<ChainEntry>& chain, UserInterface& ui, ChainFailure* failure)
        : chain_(chain), ui_(ui), failure_(failure) {}

    bool sources(const std::string& timeRange) {
        double tMin = 0, tMax = 0, interval = 0, constant = 0;
        parseRange(timeRange, tMin, tMax, interval, constant);
        for (int i = 1; i <= count(); ++i) {
            const ChainEntry& e = entry(i);
            if (!holdsMonteMarker(e.time)) {
                if (!isNumeric(e.time))
                    return refuse(i, ChainValue::Time, kFormatTitle, "The times must be numeric values.",
                                  "Please give a proper value for it.");
                const double t = numericValue(e.time);
                if (t < 0)
                    return refuse(i, ChainValue::Time, kImproperTitle, "The values of time must be greater than zero.",
                                  "Please give a proper values for time.");
                if (t < tMin || t > tMax)
                    return refuse(i, ChainValue::Time, kImproperTitle,
                                  "Input value given for the time must be between  " + generalText(tMin) + " and " +
                                      generalText(tMax),
                                  "Please give a proper input value for it.");
            }
            if (holdsMonteMarker(e.concentration)) continue;
            if (!isNumeric(e.concentration))
                return refuse(i, ChainValue::Concentration, kFormatTitle, "The concentration must be numeric values.",
                              "Please give a proper value for it.");
            if (numericValue(e.concentration) < 0)
                return refuse(i, ChainValue::Concentration, kImproperTitle,
                              "The value of concetration must be greater than zero.", "Please give a proper values for it.");
        }
        return true;
    }

    bool chemicals() {
        for (int i = 1; i <= count(); ++i) {
            const ChainEntry& e = entry(i);
            if (trim(e.name).empty())
                return refuse(i, ChainValue::Name, kNoInputTitle, "Not all values have been given for chemical names.",
                              "Please give proper chemical names.");
            if (!holdsMonteMarker(e.rate)) {
                if (!isNumeric(e.rate))
                    return refuse(i, ChainValue::Rate, kFormatTitle, "The destruction rates must be numeric values.",
                                  "Please give a proper value for it.");
                if (numericValue(e.rate) <= 0)
                    return refuse(i, ChainValue::Rate, kImproperTitle,
                                  "The value of destruction rates must be greater than zero.",
                                  "Please give a proper values for destruction rates.");
            }
            if (!holdsMonteMarker(e.yield)) {
                if (!isNumeric(e.yield))
                    return refuse(i, ChainValue::Yield, kFormatTitle, "The yield facotrs must be numeric values.",
                                  "Please give a proper value for it.");
                if (numericValue(e.yield) < 0)
                    return refuse(i, ChainValue::Yield, kImproperTitle,
                                  "The value of yield facotrs must be greater than zero.",
                                  "Please give a proper value for it.");
            }
        }
        for (int i = 1; i <= count(); ++i)
            for (int j = i + 1; j <= count(); ++j)
                if (sameDecayRate(entry(i).rate, entry(j).rate))
                    return refuse(j, ChainValue::Rate, kImproperTitle,
                                  "The decay rate of chemical " + entry(i).name + " is the same as that of chemical " +
                                      entry(j).name,
                                  "This will result in incorrect solution. Please give the proper values\rfor the "
                                  "decay rates.");
        return true;
    }

private:
    int count() const { return static_cast<int>(chain_.size()); }
    const ChainEntry& entry(int i) const { return chain_[static_cast<std::size_t>(i - 1)]; }

    bool refuse(int chemical, ChainValue value, const char* title, const std::string& first, const std::string& second) {
        ui_.message(MessageIcon::Critical, MessageButtons::Ok, title, first + kBreaks + second);
        if (failure_) *failure_ = ChainFailure{chemical, value};
        return false;
    }

    const std::vector<ChainEntry>& chain_;
    UserInterface& ui_;
    ChainFailure* failure_;
};

const std::string& textOf(const List<std::string>& list, int i) {
    static const std::string empty;
    return i <= list.ub() ? list(i) : empty;
}

}  // namespace

bool sameDecayRate(const std::string& first, const std::string& second) {
    // A single carries seven digits: rates alike in those are alike.
    const auto singleText = [](const std::string& rate) { return generalText(static_cast<float>(markerConstant(rate))); };
    return singleText(first) == singleText(second);
}

bool chainTablesAccepted(const std::vector<ChainEntry>& chain, const std::string& timeRange, UserInterface& ui,
                         ChainFailure* failure) {
    ChainChecks checks(chain, ui, failure);
    return checks.sources(timeRange) && checks.chemicals();
}

std::vector<ChainEntry> chainEntries(const DataSet& d) {
    std::vector<ChainEntry> chain;
    for (int i = 1; i <= d.numChemicals; ++i)
        chain.push_back({textOf(d.chemicalName, i), textOf(d.decayRate, i), textOf(d.yieldFactor, i),
                         textOf(d.suppositionTime, i), textOf(d.suppositionConcentration, i)});
    return chain;
}

bool chainTablesAccepted(const DataSet& data, UserInterface& ui) {
    return chainTablesAccepted(chainEntries(data), data.timeRange, ui);
}

}  // namespace bm
