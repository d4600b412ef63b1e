#include "model/units.h"

#include "model/data_set.h"
#include "model/model_kinds.h"
#include "model/number_text.h"
#include "shell/base/common_services.h"

namespace bm {

namespace {
constexpr std::array<const char*, 4> kLengthWords = {"ft", "inch", "m", "cm"};
constexpr std::array<const char*, 4> kTimeWords = {"yr", "day", "hr", "sec"};
constexpr std::array<const char*, 4> kConcentrationWords = {"mg/l", "ug/l", "ppm", "ppb"};
constexpr std::array<const char*, 4> kLengthCaptions = {"&Feet", "&Inches", "&Meters", "&Centimeters"};
constexpr std::array<const char*, 4> kTimeCaptions = {"&Years", "&Days", "&Hours", "&Seconds"};
constexpr std::array<const char*, 4> kConcentrationCaptions = {"mg/l", "ug/l", "ppm", "ppb"};
}  // namespace

const std::array<const char*, 4>& unitWords(UnitMenu menu) {
    switch (menu) {
    case UnitMenu::Length: return kLengthWords;
    case UnitMenu::Time: return kTimeWords;
    default: return kConcentrationWords;
    }
}

const std::array<const char*, 4>& unitMenuCaptions(UnitMenu menu) {
    switch (menu) {
    case UnitMenu::Length: return kLengthCaptions;
    case UnitMenu::Time: return kTimeCaptions;
    default: return kConcentrationCaptions;
    }
}

std::string unitWordOfIndex(UnitMenu menu, int index) {
    if (index % 10 != 0) return {};
    const int position = index / 10;
    if (position < 1 || position > 4) return {};
    return unitWords(menu)[static_cast<std::size_t>(position - 1)];
}

int unitIndexOfWord(UnitMenu menu, std::string_view word) {
    const auto& words = unitWords(menu);
    for (std::size_t i = 0; i < words.size(); ++i)
        if (word == words[i]) return static_cast<int>(i + 1) * 10;
    return 0;
}

std::string defaultUnitWord(UnitMenu menu) {
    switch (menu) {
    case UnitMenu::Length: return "m";
    case UnitMenu::Time: return "day";
    default: return "mg/l";
    }
}

std::string unitWordOf(const DataSet& data, UnitMenu menu) {
    const std::string& word = menu == UnitMenu::Length ? data.lengthUnit
                              : menu == UnitMenu::Time ? data.timeUnit
                                                       : data.concentrationUnit;
    return word.empty() ? defaultUnitWord(menu) : word;
}

std::string unitLabel(UnitKind kind, std::string_view lengthWord, std::string_view timeWord) {
    const std::string l(lengthWord), t(timeWord);
    switch (kind) {
    case UnitKind::Length: return "(" + l + ")";
    case UnitKind::Time: return "(" + t + ")";
    case UnitKind::Velocity: return "(" + l + "/" + t + ")";
    case UnitKind::Diffusivity: return "(" + l + "\u00b2/" + t + ")";
    case UnitKind::VolumeRate: return "(" + l + "\u00b3/" + t + ")";
    case UnitKind::None:
    default: return {};
    }
}

std::string timeColumnHeading(std::string_view timeWord) { return "Time (" + std::string(timeWord) + ")"; }

std::string concentrationColumnHeading(std::string_view modelType, std::string_view aquiferType,
                                       std::string_view contaminantType, std::string_view word) {
    // Only a saturated model of two or three dimensions has an injection field.
    const bool spatial = saturatedDimension(modelType) >= 2;
    const bool infinite = toLower(trim(aquiferType)) == "infinite";
    const bool point = contaminantType == "Continuous / Point" || contaminantType == "Continuous Point";
    if (spatial && infinite && point) return "Contaminant Conc. in the Injection Field (" + std::string(word) + ")";
    return "Contaminant Conc. at Inflow Boundary (" + std::string(word) + ")";
}

void relabelUnits(std::string_view oldWord, std::string_view newWord, const std::vector<std::string*>& labels) {
    for (std::string* label : labels)
        if (label) *label = replaceFirst(oldWord, newWord, *label);
}

UnitChoice chooseUnit(UnitMenu menu, int index, std::string_view currentWord, DataSet& data) {
    UnitChoice choice;
    choice.oldWord = std::string(currentWord);
    choice.newWord = unitWordOfIndex(menu, index);
    if (choice.newWord.empty()) {
        choice.newWord = choice.oldWord;
        return choice;
    }
    choice.changed = choice.newWord != choice.oldWord;
    if (choice.changed && !data.needsDisplayRefresh && data.dataState == kDataUnchanged) data.dataState = kNeedsSaving;
    return choice;
}

}  // namespace bm
