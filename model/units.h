#pragma once
// Units are words only: the model screens store the word the user picked in a
// unit menu and rewrite the labels that show it. No value is ever converted;
// the solvers do not look at units.

#include <array>
#include <string>
#include <string_view>
#include <vector>

namespace bm {

struct DataSet;

enum class UnitMenu { Length, Time, Concentration };

// The four words of a menu in index order: "ft", "inch", "m", "cm"; "yr", "day",
// "hr", "sec"; "mg/l", "ug/l", "ppm", "ppb".
const std::array<const char*, 4>& unitWords(UnitMenu menu);
// The menu captions in the same order ("&Feet", "&Inches", "&Meters", "&Centimeters"...).
// A separator stands between the second and the third item.
const std::array<const char*, 4>& unitMenuCaptions(UnitMenu menu);

// The word of a menu index (10, 20, 30, 40: index / 10 picks it); empty for any other index.
std::string unitWordOfIndex(UnitMenu menu, int index);
// The menu index of a word (10..40), 0 when the word is none of the menu's.
int unitIndexOfWord(UnitMenu menu, std::string_view word);

// The words a model starts with when its file names none: metres, days, mg/l.
std::string defaultUnitWord(UnitMenu menu);
// The model's word of a menu, or the default when it has none.
std::string unitWordOf(const DataSet& data, UnitMenu menu);

// The dimension of a labelled quantity, from which its unit label is built.
enum class UnitKind {
    None,          // porosity, retardation, counts: no unit label
    Length,        // (m)
    Time,          // (day)
    Velocity,      // (m/day)
    Diffusivity,   // (m²/day): dispersion coefficients, injection per unit thickness
    VolumeRate,    // (m³/day)
};

// The unit label of a quantity in the words at hand: "(" + unit + ")"; empty for None.
std::string unitLabel(UnitKind kind, std::string_view lengthWord, std::string_view timeWord);

// Column headings of the inflow grids.
std::string timeColumnHeading(std::string_view timeWord);
// "Contaminant Conc. at Inflow Boundary (" + word + ")", or, for a continuous
// point source in an infinite aquifer of two or three dimensions,
// "Contaminant Conc. in the Injection Field (" + word + ")".
std::string concentrationColumnHeading(std::string_view modelType, std::string_view aquiferType,
                                       std::string_view contaminantType, std::string_view word);

// relabelUnits: the first occurrence of the old word in each label becomes the
// new word; a label without it stays as it is.
void relabelUnits(std::string_view oldWord, std::string_view newWord, const std::vector<std::string*>& labels);

// A unit menu command, without the screen: the word of the index, and whether it
// differs from the word in force. A change raises dataState to 2 when it is 0
// and no file is being displayed (needsDisplayRefresh false).
struct UnitChoice {
    std::string oldWord;
    std::string newWord;
    bool changed = false;
};
UnitChoice chooseUnit(UnitMenu menu, int index, std::string_view currentWord, DataSet& data);

}  // namespace bm
