#pragma once
// The three new-model dialogs as form models: which option of each group is
// chosen, the captions the groups show, and what OK writes into the DataSet.

#include <string>
#include <vector>

namespace bm {

struct DataSet;

// One option group: its captions and the chosen index (0-based).
struct OptionGroup {
    std::vector<std::string> captions;
    int selected = 0;
    const std::string& selectedCaption() const { return captions.at(static_cast<std::size_t>(selected)); }
    // Selects the option of that caption; false (and no change) when there is none.
    bool select(const std::string& caption);
};

// The flags that every dialog's OK sets.
void confirmNewModel(DataSet& data);

// NewFile: saturated flow with constant dispersion coefficients.
class NewFileForm {
public:
    static constexpr const char* kCaption = "New Ground Water Model (Constant Dispersion Coefficients)";
    OptionGroup modelType{{"One Dimensional", "Two Dimensional", "Three Dimensional"}};  // Model_Type
    OptionGroup aquiferType;                                                             // Aquifer_Type
    OptionGroup contaminant;                                                             // the contaminant group
    OptionGroup chemicals{{"Single Chemical", "Multiple Chemicals"}};                    // optChemicals

    NewFileForm();
    // Load: the options of the present model when a model type is set, else the first ones.
    void load(const DataSet& data);
    // Selecting a Model_Type option relabels the two lower groups at once.
    void selectModelType(int index);
    void relabelOptions();
    void ok(DataSet& data) const;
};

// unsaturatedNewFile.
class UnsaturatedNewFileForm {
public:
    static constexpr const char* kCaption = "New Ground Water Model (Unsaturated)";
    static constexpr const char* kDimension = "One Dimensional";
    OptionGroup chemicals{{"Single Chemical", "Multiple Chemicals"}};       // optChemicals in Frame1
    OptionGroup aquiferType{{"Semi-Infinite", "Infinite"}};                 // Aquifer_Type in AT_Frame
    OptionGroup contaminant{{"Dirichlet/Exp. Decay", "Dirichlet"}};         // Contaminant in Contam_Frame

    void load(const DataSet& data);
    void ok(DataSet& data) const;
};

// timeVaryingNewForm.
class TimeVaryingNewForm {
public:
    static constexpr const char* kCaption = "New Ground Water Model (Time Varying Dispersion Coefficients)";
    OptionGroup contaminantSource{{"Point", "Line"}};                                              // contaminantSourceO
    OptionGroup sourceType{{"Instantaneous", "Continuous", "With Initial Distribution"}};          // sourceTypeO
    OptionGroup dispersionFunction{{"Constant", "Linear", "Asymptotic", "Exponential"}};           // DispersionCoefficientFunctionO

    // Sets each option whose caption, lower-cased, stands in the lower-cased
    // contaminantType (source, source type) or aquiferType (dispersion function).
    void load(const DataSet& data);
    void ok(DataSet& data) const;
};

}  // namespace bm
