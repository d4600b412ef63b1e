#pragma once
// The model-kind table: everything that tells one kind of model from another,
// in one place. A row answers to a model word (modelType, compared exactly as
// the files and screens hold it) and the chemical flag (multiChemical), and
// gives the kind, its family and dimension, the extension of its files and
// how its block is laid out in them, the padding of a Monte Carlo marker in
// its first boundary cell, its lists of Monte Carlo results per chemical, the
// screen that shows it (and whose bar shows its progress), the new-model
// dialog and help topic. Code that must tell kinds apart asks this table; it
// never compares the model word itself.
//
// What a kind calculates and writes (fill, solve, validation, outputs) is
// registered with the calculation pass (montecarlo/pass/kind_calculation.h);
// its screen with the screen registry.

#include <optional>
#include <string_view>
#include <variant>
#include <vector>

#include "model/arrays.h"
#include "model/model_kind.h"
#include "shell/base/user_interface.h"

namespace bm {

struct DataSet;

enum class ModelFamily { Saturated, Unsaturated, TimeVarying };

// Blanks on either side of "Monte Carlo" in a boundary cell's marker.
inline constexpr int kWideCellMarkerPadding = 30;    // one dimension, the unsaturated and time-varying models
inline constexpr int kNarrowCellMarkerPadding = 20;  // two and three dimensions

// The model block of a data file: which inputs and result grids it holds.
enum class BlockLayout { None, OneDimensional, TwoDimensional, ThreeDimensional, Unsaturated, TimeVarying };

// The model screens, and the Monte Carlo set-up screen that each of them opens.
enum class ModelScreen { inputForm, MCInputForm, unsatForm, MCUnsatForm, merlaform, MonteCarloForm };
const char* modelScreenName(ModelScreen screen);

// The new-model dialog that File New shows.
enum class NewModelDialog { NewFile, unsaturatedNewFile, timeVaryingNewForm };

// One chemical's list of results per iteration (subscripts 0 .. iterations -
// 1, 0 unused), whatever holds it: a list of doubles, the single-precision
// list of the time-varying model, or a chemical's row of a (chemical,
// iteration) table. Values go in and out as doubles; a single-precision list
// keeps its own precision, which its writers print.
class IterationResults {
public:
    explicit IterationResults(List<double>& list) : store_(&list) {}
    explicit IterationResults(List<float>& list) : store_(&list) {}
    IterationResults(Array<double, 2>& table, int chemical) : store_(Row{&table, chemical}) {}

    // Upper bound; -1 when never dimensioned.
    int upper() const;
    // Error 9 outside the bounds.
    double operator()(int iteration) const;
    double valueOr0(int iteration) const;
    void set(int iteration, double value);
    // A fresh list 0 .. upper; a chemical's row makes the whole table fresh,
    // with `chemicals` rows.
    void redim(int upper, int chemicals = 1);
    bool singlePrecision() const { return std::holds_alternative<List<float>*>(store_); }

private:
    struct Row {
        Array<double, 2>* table;
        int chemical;
    };
    std::variant<List<double>*, List<float>*, Row> store_;
};

struct ModelKindInfo {
    std::string_view modelType;  // the word ("One Dimensional")
    bool multiChemical = false;  // the chemical flag the row answers to
    ModelKind kind = ModelKind::OneDimensional;
    ModelFamily family = ModelFamily::Saturated;
    int dimension = 1;                    // axes in space: x; x and y; x, y and z
    std::string_view extension;           // of its files, as the dialogs show it (".one", ".MCU")
    bool extensionMarksChemicals = false;  // a file of this extension holds several chemicals
    BlockLayout blockLayout = BlockLayout::None;
    int markerPadding = kWideCellMarkerPadding;  // blanks on either side of "Monte Carlo" in the first boundary cell
    ModelScreen screen = ModelScreen::inputForm;
    ProgressOwner progressOwner = ProgressOwner::InputForm;
    NewModelDialog newModelDialog = NewModelDialog::NewFile;
    int helpContext = 0;
    // The Monte Carlo results of a chemical (1 for a single-chemical model);
    // nullptr for a kind that has none.
    IterationResults (*monteCarloResults)(DataSet& data, int chemical) = nullptr;

    bool isSaturated() const { return family == ModelFamily::Saturated; }
    // 1, 2 or 3 for the saturated kinds, else 0.
    int saturatedDimension() const { return isSaturated() ? dimension : 0; }
};

// Every row, in a fixed order.
const std::vector<ModelKindInfo>& modelKindTable();
// The row of a word and chemical flag; nullptr for an empty or unknown word.
const ModelKindInfo* modelKindInfo(std::string_view modelType, bool multiChemical);
// The same for the words as a hand-written file may case them ("two dimensional").
const ModelKindInfo* modelKindInfoIgnoringCase(std::string_view modelType, bool multiChemical);
// The row of the open model (modelType and multiChemical).
const ModelKindInfo* modelKindInfo(const DataSet& data);
// The first row of a kind, whose word is the one the program writes.
const ModelKindInfo& modelKindInfo(ModelKind kind);
// The saturated kind of a dimension (1, 2 or 3) and chemical flag.
const ModelKindInfo& saturatedKindInfo(int dimension, bool multiChemical);

// The kind of a word and chemical flag; nothing for an empty or unknown word.
std::optional<ModelKind> modelKindOf(std::string_view modelType, bool multiChemical);
// "Unsaturated", "Unsaturated One Dimensional", "Unsaturated Two Dimensional", "Unsaturated Three Dimensional".
bool isUnsaturatedType(std::string_view modelType);
// 1, 2 or 3 for "One Dimensional", "Two Dimensional", "Three Dimensional", else 0.
int saturatedDimension(std::string_view modelType);
// The screen of a word and chemical flag (the saturated ones for no model).
ModelScreen modelScreenFor(std::string_view modelType, bool multiChemical);
// The new-model dialog that New shows for the word at that moment.
NewModelDialog newModelDialogFor(std::string_view modelType);
// The block layout of a word (None for an empty or unknown one).
BlockLayout blockLayoutOf(std::string_view modelType);
// The marker padding of a word in any case; the wide one for an unknown word.
int boundaryMarkerPadding(std::string_view modelType);
// The screen whose bar shows a driver's progress, by the family of its model
// and the chemical flag.
ProgressOwner progressOwnerOf(ModelFamily family, bool multiChemical);
// The word the program writes for a kind.
std::string_view modelTypeOf(ModelKind kind);

// The Monte Carlo results of the open model's chemical; a kind without lists
// (or an unknown word) has none.
std::optional<IterationResults> monteCarloResultsOf(DataSet& data, int chemical = 1);

}  // namespace bm
